// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "model/listing/InspectionContext.h"
#include "model/values/MXItemKind.h"
#include "platform/metadata/MetadataStore.h"

#include <cstdint>

#include <QByteArray>

/// How the kind of an item follows from what is known of it. Any thread.
namespace MWCore {

/// What a look at an item told, be it a listing's or a stat call's.
struct ItemFacts {
    int32_t type = 0;          ///< MFS_TYPE_...
    int32_t targetType = 0;    ///< of a link: what it leads to, or MFS_TARGET_UNKNOWN
    bool isExecutable = false; ///< for anybody
    Sidecars sidecars = Sidecars::MayExist;
};

struct Classification {
    MXItemKind kind = MXItemKindUnknown;
    MXItemKind targetKind = MXItemKindUnknown; ///< of a link or an alias
    bool isPackaged = false;                   ///< an application that is a folder
};

/// The kind of the item at @p path, in file-system representation. Asks the system only for what
/// @p facts leave open: of a plain file and a folder the Finder information, of a folder also
/// whether it is a mount point or application. Opens a plain file only when its name or its
/// permissions say that it may be an alias or an application.
///
/// Where @p inspection grants no look: an item with the alias flag is an alias with an unknown
/// target, any other file no more than its Finder type says, and a folder no application.
[[nodiscard]] Classification classify(const QByteArray &path, const ItemFacts &facts,
                                      InspectionContext &inspection);

} // namespace MWCore
