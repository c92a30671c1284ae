// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/aliases/Aliases.h"

#include "platform/aliases/AliasFollowing.h"

namespace MWCore {

OSStatus FSNewAlias(const FSRef &target, QByteArray *alias) {
    QByteArray path;
    OSStatus status = currentPath(target, &path);
    const auto record = status == noErr ? aliasRecordOf(path, &status) : std::nullopt;
    if (record)
        *alias = record->toBytes();
    return status;
}

OSStatus FSResolveAlias(const QByteArray &alias, FSRef *target, const std::atomic<bool> *cancelled,
                        int64_t searchedNames) {
    MountSnapshot mounts;
    ResolutionContext context({.entries = searchedNames, .cancelled = cancelled}, mounts);
    return resolveAlias(alias, target, context);
}

std::optional<AliasInfo> aliasInfo(const QByteArray &alias) {
    const auto record = AliasRecord::parse(alias);
    return record ? std::optional(AliasInfo{record->path, record->realPath, record->identity})
                  : std::nullopt;
}

struct ListedAliases::State {
    MountSnapshot mounts;
};

ListedAliases::ListedAliases(TimeBudget &timeBudget)
    : timeBudget_(timeBudget), state_(std::make_unique<State>()) {}

ListedAliases::~ListedAliases() = default;

OSStatus ListedAliases::resolve(const QByteArray &path, QByteArray *target) {
    const TimeBudget::Use use(timeBudget_);
    if (!use.isGranted())
        return fileBoundsErr;
    ResolutionContext context({.entries = kQuickSearchNames, .timeBudget = &timeBudget_},
                              state_->mounts, RemoteAccess::None);
    context.ownMount = mountAt(path);
    OSStatus status = fnfErr;
    const auto lead = aliasContentIn(path);
    const auto found = lead ? followAlias(*lead, AliasSteps::All, context, &status) : std::nullopt;
    if (found)
        *target = found->item.path;
    return status;
}

OSStatus resolveAlias(const QByteArray &alias, FSRef *target, ResolutionContext &context) {
    const auto record = AliasRecord::parse(alias);
    if (!record)
        return mapReadErr;
    OSStatus status = noErr;
    if (auto item = locate(*record, Replacement::Accept, context, &status))
        *target = std::move(*item);
    return status;
}

} // namespace MWCore
