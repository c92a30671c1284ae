// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/FSRef.h>
#include <MWCore/IconFamilyData.h>
#include <MWCore/mwcore_export.h>
#include <MWCore/OSStatus.h>

#include <cstdint>

#include <QByteArray>
#include <QString>
#include <QStringList>

/// The icons that the desktop shows. Nothing but regular files and folders is opened. Any thread.
namespace MWCore {

/// Which icon is meant. The first of these that exists and can be read is drawn. A plain value.
///
/// The own names of an item, such as that of its program, are each looked for in the user's theme
/// and all that it inherits. Of the other names, which stand for its kind, any one in a theme is
/// preferred to all in those that the theme inherits.
struct IconRef {
    QByteArray customIconOf; ///< the path of an item with a custom icon
    QByteArray file;         ///< the path of a picture or icon family, without links
    QByteArray thumbnailOf;  ///< the path of a file that the shared thumbnails may show
    QStringList themeNames;  ///< icons of the user's theme, the most specific one first
    qsizetype ownNames = 0;  ///< how many of them, from the first on, are those of the item alone
    QString drawing;         ///< one of this library's own, by the name of the SVG resource
    uint64_t version = 0;    ///< another one once one of those files changes; 0 without a file

    bool operator==(const IconRef &) const = default;
};

inline constexpr int16_t kOnSystemDisk = -32768;
inline constexpr uint32_t kSystemIconsCreator = 0x6D616373; ///< 'macs'

/// The icon of the system with the four-character code @p iconType: folders ('fldr', 'docs',
/// 'desk', 'trsh', ...), documents, disks, alerts and badges. fnfErr if the code is unknown, or for
/// any other volume or creator than those above.
[[nodiscard]] MWCORE_EXPORT OSStatus GetIconRef(int16_t vRefNum, uint32_t creator,
                                                uint32_t iconType, IconRef *iconRef);

/// The icon that the desktop shows for an item. The first of these that it has: its custom icon,
/// the one that its file ".directory" names, the answer of lookUpDesktopIcon(), that of an
/// application folder, the one that a desktop entry names, that of the item to which an alias file
/// leads, that of an integrated AppImage, its shared thumbnail, that of the purpose of a user's
/// folder, that of a volume, else that of its MIME type or kind. More general icons of the theme
/// follow it. A link has the icon of its target. fnfErr if the item is gone.
[[nodiscard]] MWCORE_EXPORT OSStatus GetIconRefFromFileInfo(const FSRef &ref, IconRef *iconRef);

/// Selects every element.
inline constexpr uint32_t kSelectorAllAvailableData = 0xFFFFFFFF;

/// The icon as a family, without its thumbnail. One that is drawn has all modern elements, and
/// 32-bit ones with masks of 16, 32, 48 and 128 pixels; each size is looked up in the theme by
/// itself, as themes simplify small icons. @p whichIcons must be kSelectorAllAvailableData, else
/// paramErr.
[[nodiscard]] MWCORE_EXPORT OSStatus IconRefToIconFamily(const IconRef &iconRef,
                                                         uint32_t whichIcons,
                                                         IconFamilyHandle *iconFamily);

/// The longest file with a family or picture that is read for an icon, in bytes. A family with
/// every element uncompressed has about 7,000,000.
inline constexpr int64_t kLongestIconFile = 67'108'864;

/// The icon family in a regular file, or in the target of a link. mapReadErr if it does not begin
/// with an icns header, fileBoundsErr if it is longer than kLongestIconFile.
[[nodiscard]] MWCORE_EXPORT OSStatus ReadIconFromFSRef(const FSRef &ref,
                                                       IconFamilyHandle *iconFamily);

/// Where custom icons are stored: the id of a resource 'icns', for a folder in the fork of a file
/// of this name in it.
inline constexpr int16_t kCustomIconResource = -16455;
inline constexpr const char *kFolderIconFile = "Icon\r";

/// The custom icon of an item: resource 'icns' -16455 of a file's fork, or of the file "Icon\r" in
/// a folder, if the item's Finder flags say that it has one. resNotFound or resFNotFound if there
/// is none, mapReadErr if it does not begin with an icns header.
[[nodiscard]] MWCORE_EXPORT OSStatus customIconOf(const FSRef &ref, IconFamilyHandle *iconFamily);

} // namespace MWCore
