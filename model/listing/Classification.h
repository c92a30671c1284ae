// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "model/listing/InspectionContext.h"
#include "model/values/MXItemKind.h"
#include "platform/metadata/MetadataStore.h"

#include <cstdint>

#include <QByteArray>

/// Finds the kind of an item. Any thread.
namespace MWCore {

/// What is known of an item from a listing or from stat(2).
struct ItemFacts {
    int32_t type = 0;          ///< MFS_TYPE_...
    int32_t targetType = 0;    ///< of a link's target: MFS_TYPE_... or MFS_TARGET_UNKNOWN
    bool isExecutable = false; ///< for user, group or others
    Sidecars sidecars = Sidecars::MayExist;
    uint64_t inodeState = 0; ///< if it tells whether the item has changed since; else 0
};

struct Classification {
    MXItemKind kind = MXItemKindUnknown;
    MXItemKind targetKind = MXItemKindUnknown; ///< of a link or an alias
    bool isPackaged = false;                   ///< whether it is an application in a folder
    uint64_t unflaggedState = 0; ///< ItemFacts::inodeState of a file or folder without Finder flags
};

/// The kind of the item at @p path (file-system representation). Asks the system only for what
/// @p facts do not contain: the Finder information of a plain file or folder, and whether a folder
/// is a mount point or an application. Opens a plain file only if its name, permissions or alias
/// flag suggest an alias or an application.
///
/// If the time budget of @p inspection is used up, a file with the alias flag is an alias with an
/// unknown target, any other file has the kind of its Finder type, and a folder is not an
/// application.
[[nodiscard]] Classification classify(const QByteArray &path, const ItemFacts &facts,
                                      InspectionContext &inspection);

} // namespace MWCore
