// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mwcore_export.h>
#include <MWCore/OSStatus.h>

#include <cstdint>

#include <QByteArray>
#include <QString>

/// What an item is to the desktop. Links are not followed and nothing but plain files is opened.
/// Paths in file-system representation. Any thread.
namespace MWCore {

/// A set of these describes a folder; other items have none.
enum LSItemInfoFlags : uint32_t {
    kLSItemInfoIsPackage = 0x2, ///< shown as one thing; every application is one
    kLSItemInfoIsApplication = 0x4,
    kLSItemInfoIsVolume = 0x1000, ///< a mount point
};

/// Finds the @p flags of the item at @p path. The folder is an application as `X.app` with a
/// readable file `Contents/Info.plist`, or as an AppDir; a package by its extension or by the
/// bundle bit of its Finder flags. An ordinary folder costs one `statx` and one failed lookup.
[[nodiscard]] MWCORE_EXPORT OSStatus LSCopyItemInfoForPath(const QByteArray &path,
                                                           uint16_t finderFlags, uint32_t *flags);

/// What people call an item of this kind, in their language. "Alias" for both forms of alias files,
/// wherever they lead; "Application" for a folder that is one; for any other package what the MIME
/// database calls its name, else "Package"; else the database's comment, that of a plain file by
/// its name and, where the name leaves it open, by its first 16 KB. Null for what is not there.
[[nodiscard]] MWCORE_EXPORT QString LSCopyKindString(const QByteArray &path);

/// Whether a plain file is an application by itself: an AppImage, or a desktop entry that starts
/// one. False for what cannot be read.
[[nodiscard]] MWCORE_EXPORT bool isPlainFileApplication(const QByteArray &path);

} // namespace MWCore
