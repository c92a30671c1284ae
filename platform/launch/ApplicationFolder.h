// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <functional>
#include <optional>

#include <QByteArray>

/// Folders that are applications: `X.app` with the property list `Contents/Info.plist`, or an
/// AppDir, which contains the executable `AppRun` and a desktop entry that describes it. Paths are
/// in file-system representation. Any thread.
namespace MWCore {

/// Whether a regular file, or a link to one, is at @p path.
[[nodiscard]] bool isRegularFile(const QByteArray &path);

/// The path of the folder's `AppRun`.
[[nodiscard]] QByteArray appRunPath(const QByteArray &folder);

/// The name of the desktop entry in @p folder that describes it: the first by name (compared as
/// bytes) that @p isUsable accepts. Empty if there is none. Of hundreds, only some are tried.
[[nodiscard]] QByteArray
describingEntry(const QByteArray &folder,
                const std::function<bool(const QByteArray &name)> &isUsable);

/// The path of the desktop entry that describes the AppDir @p folder. nullopt if the folder is not
/// an AppDir. A folder without `AppRun` is not listed at all.
[[nodiscard]] std::optional<QByteArray> appDirEntryPath(const QByteArray &folder);

/// Whether @p folder is either of them. Does not check the content of its property list or desktop
/// entry.
[[nodiscard]] bool isApplicationFolder(const QByteArray &folder);

} // namespace MWCore
