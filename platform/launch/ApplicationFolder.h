// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <optional>

#include <QByteArray>

/// Folders that are applications: `X.app` with the property list `Contents/Info.plist`, and an
/// AppDir, which has the file `AppRun`, to start, and a desktop entry, to describe it, at its top.
/// Paths in file-system representation. Any thread.
namespace MWCore {

/// Whether a plain file, or a link to one, is at @p path.
[[nodiscard]] bool isPlainFile(const QByteArray &path);

/// The path of the folder's `AppRun`.
[[nodiscard]] QByteArray appRunPath(const QByteArray &folder);

/// The path of the desktop entry of the AppDir @p folder, of several the first one by name (bytes).
/// Nothing for a folder that is no AppDir; one without `AppRun` is not even listed.
[[nodiscard]] std::optional<QByteArray> appDirEntryPath(const QByteArray &folder);

/// Whether @p folder is either of them. What describes it need not make sense.
[[nodiscard]] bool isApplicationFolder(const QByteArray &folder);

} // namespace MWCore
