// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/foundation/mwcore_export.h"

#include <vector>

#include <QByteArray>

/// The folders of the XDG Base Directory Specification, 0.8, in file-system representation. Paths
/// in the environment that are not absolute are ignored, as it requires. Any thread.
namespace MWCore {

/// Empty if it is unknown.
[[nodiscard]] MWCORE_EXPORT QByteArray homeFolder();

/// The user's folder, then those of the system, the most important one first.
[[nodiscard]] MWCORE_EXPORT std::vector<QByteArray> dataFolders();
[[nodiscard]] std::vector<QByteArray> configFolders();

/// The user's own folders of data, of settings, and of files that can be made again; empty if they
/// are unknown.
[[nodiscard]] QByteArray userDataFolder();
[[nodiscard]] QByteArray userConfigFolder();
[[nodiscard]] QByteArray userCacheFolder();

} // namespace MWCore
