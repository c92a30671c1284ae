// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/FinderInfo.h>
#include <MWCore/mwcore_export.h>
#include <MWCore/OSStatus.h>

#include <cstdint>

#include <QByteArray>
#include <QFlags>
#include <QString>

/// What an item is to the desktop. Links are not followed, and nothing but regular files is opened.
/// Paths are in file-system representation. Any thread.
namespace MWCore {

/// Flags of a folder; other items have none.
enum LSItemInfoFlag : uint32_t {
    kLSItemInfoIsPackage = 0x2, ///< shown as a single item; includes every application
    kLSItemInfoIsApplication = 0x4,
    kLSItemInfoIsVolume = 0x1000, ///< a mount point
};
Q_DECLARE_FLAGS(LSItemInfoFlags, LSItemInfoFlag)
Q_DECLARE_OPERATORS_FOR_FLAGS(LSItemInfoFlags)

/// Finds the @p flags of the item at @p path. A folder is an application if it is an `X.app` with a
/// readable file `Contents/Info.plist`, or an AppDir; it is a package if its extension or the
/// bundle bit in @p finderFlags says so. An ordinary folder costs one `statx` and one failed
/// lookup.
[[nodiscard]] MWCORE_EXPORT OSStatus LSCopyItemInfoForPath(const QByteArray &path,
                                                           FinderFlags finderFlags,
                                                           LSItemInfoFlags *flags);

/// The name of the item's kind in the user's language. "Alias" for both forms of alias files,
/// even if the item is gone, but not for URLs of other hosts; "Application" for an application
/// folder; for any other package the MIME database's comment for its name, else "Package"; for any
/// other item the database's comment. The type of a regular file is found by its name and, if that
/// is ambiguous, by its first 16 KB. Null if nothing is there.
[[nodiscard]] MWCORE_EXPORT QString LSCopyKindString(const QByteArray &path);

/// Whether a regular file is itself an application: an AppImage, or a desktop entry that starts
/// one. False if it cannot be read.
[[nodiscard]] MWCORE_EXPORT bool isPlainFileApplication(const QByteArray &path);

} // namespace MWCore
