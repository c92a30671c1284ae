// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/icons/ItemIconFacts.h"

#include <MWCore/IconElements.h>
#include <MWCore/IconServices.h>

#include <utility>

namespace MWCore {
namespace {

using Kind = ItemIconFacts::Kind;

constexpr uint32_t kGenericDocument = fourCharCode("docu");
constexpr uint32_t kGenericFolder = fourCharCode("fldr");

IconRef genericRef(Kind kind) {
    IconRef icon;
    [[maybe_unused]] const OSStatus status =
        GetIconRef(kOnSystemDisk, kSystemIconsCreator,
                   kind == Kind::Folder ? kGenericFolder : kGenericDocument,
                   &icon); // the types are known
    return icon;
}

IconBadge badgeOf(Kind kind) {
    return kind == Kind::Link ? IconBadge::Alias : IconBadge::None;
}

} // namespace

ItemIcon::Ptr iconOf(const ItemIconFacts &item, OSStatus *lockStatus) {
    if (!item.isLocal)
        return genericIcon(item.kind);
    return item.kind == Kind::File
               ? iconForPlainFile(item.path, lockStatus, item.unflaggedState)
               : iconForFile(item.path, badgeOf(item.kind), item.unflaggedState);
}

ItemIcon::Ptr genericIcon(Kind kind) {
    return ItemIcon::init(genericRef(kind), badgeOf(kind));
}

ItemIcon::Ptr drawnGenericIcon(Kind kind) {
    IconRef icon = genericRef(kind);
    icon.themeNames.clear();
    return ItemIcon::init(std::move(icon), badgeOf(kind));
}

} // namespace MWCore
