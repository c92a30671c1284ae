// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/aliases/Aliases.h"

#include "platform/references/AliasResolution.h"

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
    const auto record = AliasRecord::parse(alias);
    if (!record)
        return mapReadErr;
    const SearchLimits limits = {.entries = searchedNames, .cancelled = cancelled};
    OSStatus status = noErr;
    const auto path = locate(*record, Replacement::IsTheItem, limits, &status);
    return path ? FSPathMakeRef(*path, target) : status;
}

} // namespace MWCore
