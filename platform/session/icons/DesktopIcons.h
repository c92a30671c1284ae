// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mwdesktop_export.h>

/// Item icons as the desktop session shows them. Any thread.
namespace MWCore {

/// From now on, items have the custom icons that GNOME's, Cinnamon's, MATE's and Xfce's file
/// managers have given them, and the icon theme is the one that the user has chosen in the settings
/// of GNOME, Cinnamon or MATE, also when that changes. Both are asked of GIO, on a thread that
/// never ends.
///
/// Returns false and changes nothing if the environment names no session bus. If the session does
/// not answer, nothing waits longer than a quarter of a second: this call returns true, and items
/// have no such icons until it answers.
MWDESKTOP_EXPORT bool useDesktopIcons();

/// Ends that. The theme is that of the settings files again.
MWDESKTOP_EXPORT void stopUsingDesktopIcons();

} // namespace MWCore
