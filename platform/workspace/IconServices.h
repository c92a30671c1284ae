// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/FSRef.h>
#include <MWCore/IconFamilyData.h>
#include <MWCore/mwcore_export.h>
#include <MWCore/OSStatus.h>

#include <cstdint>

#include <QByteArray>
#include <QStringList>

/// The icons that the desktop shows. Items that are not regular files or folders are never opened.
/// Any thread.
namespace MWCore {

/// Which icon is meant: the bytes of a family, or the names of a theme's icons. A plain value.
struct IconRef {
    IconFamilyHandle family; ///< a custom icon or that of a bundle; else empty
    QByteArray file;         ///< a picture that the item names; else empty
    QStringList themeNames;  ///< the most special one first
};

inline constexpr int16_t kOnSystemDisk = -32768;
inline constexpr uint32_t kSystemIconsCreator = 0x6D616373; ///< 'macs'

/// The icon of the system with the four-character code @p iconType: folders ('fldr', 'docs',
/// 'desk', 'trsh', ...), documents, disks, alerts and badges. fnfErr if the code is unknown.
[[nodiscard]] MWCORE_EXPORT OSStatus GetIconRef(int16_t vRefNum, uint32_t creator,
                                                uint32_t iconType, IconRef *iconRef);

/// The icon that the desktop shows for an item: its custom icon; that of an application folder;
/// that which a desktop entry names; for a folder of the user's that of its purpose; else that of
/// its MIME type or kind.
[[nodiscard]] MWCORE_EXPORT OSStatus GetIconRefFromFileInfo(const FSRef &ref, IconRef *iconRef);

/// Selects every element.
inline constexpr uint32_t kSelectorAllAvailableData = 0xFFFFFFFF;

/// The icon as a family. A family of the reference is returned as it is; an icon of the theme is
/// drawn in all sizes of @p whichIcons. Without a theme, a drawing of this library's own is used.
[[nodiscard]] MWCORE_EXPORT OSStatus IconRefToIconFamily(const IconRef &iconRef,
                                                         uint32_t whichIcons,
                                                         IconFamilyHandle *iconFamily);

/// The icon family in a file. mapReadErr if it does not begin with an icns header.
[[nodiscard]] MWCORE_EXPORT OSStatus ReadIconFromFSRef(const FSRef &ref,
                                                       IconFamilyHandle *iconFamily);

/// The custom icon of an item: resource 'icns' -16455 of a file's fork, or of the file "Icon\r" in
/// a folder, if the item's Finder flags say that it has one. resNotFound if it has none.
[[nodiscard]] MWCORE_EXPORT OSStatus customIconOf(const FSRef &ref, IconFamilyHandle *iconFamily);

} // namespace MWCore
