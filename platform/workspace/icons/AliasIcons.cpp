// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/icons/AliasIcons.h"

#include "platform/aliases/Aliases.h"
#include "platform/workspace/icons/IconSources.h"
#include "platform/workspace/icons/ItemIcons.h"

#include <utility>

namespace MWCore {
namespace {

constexpr TimeBudget::Limits kForOneAlias = {.fixed = 20'000'000, .share = 0};

} // namespace

void addTargetIcon(const IconItem &item, IconRef &icon) {
    TimeBudget budget(kForOneAlias);
    QByteArray target;
    if (item.role != ItemRole::Shown || ListedAliases(budget).resolve(item.path, &target) != noErr)
        return;
    FoundIcon found = findItemIcon(target, ItemRole::AliasTarget);
    if (found.status == noErr)
        icon = std::move(found.icon);
}

void addAliasTargetIcon(const IconItem &item, IconRef &icon) {
    if (item.flags.testFlag(kIsAlias))
        addTargetIcon(item, icon);
}

} // namespace MWCore
