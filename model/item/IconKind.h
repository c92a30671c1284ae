// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "model/icons/ItemIconFacts.h"
#include "model/item/MXFileSystemObject.h"

namespace MWCore {

[[nodiscard]] inline ItemIconFacts::Kind iconKindOf(const MXFileSystemObject &item) {
    using Kind = ItemIconFacts::Kind;
    if (item.isLink() || item.isAlias())
        return Kind::Link;
    if (item.isDir())
        return Kind::Folder;
    return item.isFile() ? Kind::File : Kind::Other;
}

} // namespace MWCore
