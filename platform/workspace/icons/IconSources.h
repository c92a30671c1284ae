// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/posix/Descriptor.h"
#include "platform/launch/ItemStatus.h"
#include "platform/metadata/FinderInfo.h"
#include "platform/workspace/icons/IconServices.h"

#include <cstdint>

#include <QByteArray>

/// Where the icon of an item comes from, one function a source. Each is given what the less
/// important sources have found, and puts its own icon before it or in its place; one that has none
/// changes nothing. A file must be regular, and on a file system that answers. Any thread.
namespace MWCore {

enum class ItemRole : uint8_t {
    Shown,
    AliasTarget, ///< of the item that is shown; not followed if it is an alias by now
};

/// The item whose icon is wanted.
struct IconItem {
    QByteArray path; ///< absolute
    ItemStatus status;
    Descriptor folder; ///< O_PATH, if it is a folder into which may be looked
    FinderFlags flags; ///< of a file or such a folder
    ItemRole role = ItemRole::Shown;
    QByteArray link; ///< the path of the link that led to the item; empty without one
};

/// Whether the item is a volume that is served by a program or over a network, so that to look
/// into it could take for ever.
[[nodiscard]] bool mayNotAnswer(const IconItem &item);

// Of folders and files:

/// The custom icon, if the item's Finder flags say that it has one; that of a volume may also be
/// in the file ".VolumeIcon.icns" in it.
void addCustomIcon(const IconItem &item, IconRef &icon);

/// The answer of lookUpDesktopIcon().
void addLookedUpIcon(const IconItem &item, IconRef &icon);

// Of folders:

/// The icon that the file ".directory" in the folder names, as KDE's file managers write it: an
/// icon of the theme, an absolute path, or "./" and a path in the folder.
void addDirectoryFileIcon(const IconItem &item, IconRef &icon);

/// The icon that an application folder brings along (ApplicationFolder.h), if it lies in the folder
/// without links out of it.
void addApplicationIcon(const IconItem &item, IconRef &icon);

/// The icon of the purpose of one of the user's folders: the home folder, or one of those in
/// user-dirs.dirs (xdg-user-dirs), which may be a link to the item.
void addUserFolderIcon(const IconItem &item, IconRef &icon);

/// The icon of the medium of a volume.
void addVolumeIcon(const IconItem &item, IconRef &icon);

// Of files:

/// The icon of the item to which an alias file with the alias flag leads, unless that item would
/// have to be searched for or is on a file system that may not answer.
void addAliasTargetIcon(const IconItem &item, IconRef &icon);

/// The icon that a desktop entry names, else that of an application, or of the item to which the
/// entry leads.
void addDesktopEntryIcon(const IconItem &item, IconRef &icon);

/// The icon of an AppImage for which the user's applications have an entry. It is not opened
/// itself.
void addAppImageIcon(const IconItem &item, IconRef &icon);

/// The thumbnail of the file, if there is one; whether it is fresh is found out when it is drawn.
void addThumbnail(const IconItem &item, IconRef &icon);

} // namespace MWCore
