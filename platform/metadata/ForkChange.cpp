// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/metadata/ForkAttributes.h"
#include "platform/metadata/MetadataChange.h"
#include "platform/metadata/MetadataStore.h"
#include "platform/metadata/Sidecar.h"

namespace MWCore {
namespace {

/// Plans to remove the fork from every place; otherwise a reader would find another copy.
OSStatus planRemovals(MetadataChange &change, const AttributeNames &names) {
    OSStatus status = noErr;
    for (const ForkAttribute &place : kForkAttributes) {
        if (!names.contains(place.name))
            continue;
        const auto value = attribute(change.path(), place.name, &status);
        if (!value)
            return status;
        change.set(place.name, *value, std::nullopt);
    }
    const auto entry = sidecarEntry(change.path(), kResourceForkEntry, 0, &status);
    if (!entry || entry->length == 0)
        return status;
    if (AppleDouble *const sidecar = change.sidecar(&status))
        sidecar->replace(kResourceForkEntry, {});
    return status;
}

OSStatus planInAttribute(MetadataChange &change, const AttributeNames &names,
                         const ForkAttribute &place, const ForkChange &changed) {
    OSStatus status = noErr;
    const auto value = attribute(change.path(), place.name, &status);
    if (!value)
        return status;
    const QByteArrayView before(*value);
    const QByteArray fork = changed(before.first(place.forkLength(before.size())), &status);
    if (status == noErr && fork.isEmpty())
        return planRemovals(change, names);
    change.set(place.name, *value, fork + QByteArray(place.trailing, '\0'));
    return status;
}

OSStatus planInSidecar(MetadataChange &change, const ForkChange &changed) {
    OSStatus status = noErr;
    AppleDouble *const sidecar = change.sidecar(&status);
    if (!sidecar)
        return status;
    const QByteArrayView before = sidecar->content(kResourceForkEntry);
    const QByteArray fork = changed(before, &status);
    if (fork.size() > kLargestSidecar)
        return fileBoundsErr; // its length may not fit into an entry
    if (status == noErr && !(fork.isEmpty() && before.isEmpty()))
        sidecar->replace(kResourceForkEntry, fork);
    return status;
}

OSStatus planFork(MetadataChange &change, const ForkChange &changed) {
    const AttributeNames names(change.path());
    if (const OSStatus status = statusOfKind(change.item()); status != noErr)
        return status;
    const ForkAttribute *const place = forkAttribute(names);
    return place ? planInAttribute(change, names, *place, changed) : planInSidecar(change, changed);
}

} // namespace

OSStatus changeResourceFork(const ItemLocator &item, const ForkChange &change) {
    return changeMetadata(item, [&change](MetadataChange &attempt) {
        return std::optional(planFork(attempt, change));
    });
}

OSStatus writeResourceFork(const QByteArray &path, const QByteArray &fork) {
    OSStatus status = noErr;
    const auto item = ItemLocator::find(path, &status);
    return item ? changeResourceFork(*item, [&fork](QByteArrayView /*before*/,
                                                    OSStatus * /*status*/) { return fork; })
                : status;
}

} // namespace MWCore
