// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/ItemIcon.h>

#include <cstdint>

#include <QByteArray>

namespace MWCore {

/// What decides the icon of an item object. A value that another thread may use while the
/// object changes.
struct ItemIconFacts {
    enum class Kind : uint8_t {
        File,
        Folder,
        Link, ///< or alias
        Other
    };

    Kind kind = Kind::File;
    bool isLocal = false;
    QByteArray path;             ///< only of a local item
    uint64_t unflaggedState = 0; ///< as for iconForFile()
};

/// The icon that the item has: the workspace's, with a badge for a link, an alias or a locked file;
/// a generic one for a remote item. Never null. Sets @p lockStatus, which may be null, to why it
/// could not be found out whether a local file is locked. Any thread.
[[nodiscard]] ItemIcon::Ptr iconOf(const ItemIconFacts &item, OSStatus *lockStatus = nullptr);

/// The icon of a remote item. Touches no file system.
[[nodiscard]] ItemIcon::Ptr genericIcon(ItemIconFacts::Kind kind);

/// The same without a theme, as this library draws it.
[[nodiscard]] ItemIcon::Ptr drawnGenericIcon(ItemIconFacts::Kind kind);

} // namespace MWCore
