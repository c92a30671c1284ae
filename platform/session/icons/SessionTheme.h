// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <functional>

#include <QString>

/// The icon theme in the settings of the session's desktop. Any thread.
namespace MWCore {

using SessionThemeChanged = std::function<void(const QString &name)>;

/// Calls @p changed with the theme's name, usually before this returns, and again whenever the user
/// chooses another one, always on the thread of GIO. Does nothing on desktops that store the theme
/// elsewhere (KDE in kdeglobals, for instance). Replaces an earlier call.
void followSessionTheme(SessionThemeChanged changed);

/// Ends that: calls `changed` a last time, with an empty name, usually before this returns.
void stopFollowingSessionTheme();

} // namespace MWCore
