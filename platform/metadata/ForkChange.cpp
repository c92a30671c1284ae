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

/// The value of the attribute @p place and the fork in it that @p changed makes of it.
struct AttributeFork {
    QByteArray before;
    QByteArray fork;
};
std::optional<AttributeFork> changedInAttribute(const MetadataChange &change,
                                                const ForkAttribute &place,
                                                const ForkChange &changed, OSStatus *status) {
    const auto value = attribute(change.path(), place.name, status);
    if (!value)
        return std::nullopt;
    const QByteArrayView before(*value);
    const QByteArray fork = changed(before.first(place.forkLength(before.size())), status);
    return *status == noErr ? std::optional(AttributeFork{*value, fork}) : std::nullopt;
}

OSStatus planInAttribute(MetadataChange &change, const AttributeNames &names,
                         const ForkAttribute &place, const ForkChange &changed) {
    OSStatus status = noErr;
    const auto made = changedInAttribute(change, place, changed, &status);
    if (!made)
        return status;
    if (made->fork.isEmpty())
        return planRemovals(change, names);
    change.set(place.name, made->before, made->fork + QByteArray(place.trailing, '\0'));
    return noErr;
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
    OSStatus status = statusOfKind(change.item());
    if (status == noErr)
        status = statusOfNames(change.path(), names);
    if (status != noErr)
        return status;
    const ForkAttribute *const place = forkAttribute(names);
    return place ? planInAttribute(change, names, *place, changed) : planInSidecar(change, changed);
}

/// Plans to write the fork to the sidecar although the attribute @p place holds one, which still
/// counts. Sets @p before to the attribute's value.
OSStatus planCopy(MetadataChange &change, const ForkAttribute &place, const ForkChange &changed,
                  QByteArray *before) {
    OSStatus status = noErr;
    const auto made = changedInAttribute(change, place, changed, &status);
    if (!made)
        return status;
    *before = made->before;
    change.set(place.name, made->before, made->before);
    return planInSidecar(
        change, [&made](QByteArrayView /*old*/, OSStatus * /*status*/) { return made->fork; });
}

/// Plans to remove the attributes with a fork. nullopt if the one that counts, @p place, no longer
/// has the value @p before.
std::optional<OSStatus> planAttributeRemovals(MetadataChange &change, const ForkAttribute &place,
                                              const QByteArray &before) {
    const AttributeNames names(change.path());
    OSStatus status = statusOfNames(change.path(), names);
    if (status != noErr)
        return status;
    for (const ForkAttribute &other : kForkAttributes) {
        if (!names.contains(other.name))
            continue;
        const auto value = attribute(change.path(), other.name, &status);
        if (!value)
            return status;
        if (other.name == place.name && *value != before)
            return fBsyErr;
        change.set(other.name, *value, std::nullopt);
    }
    return noErr;
}

/// Moves a fork that became too long for its attribute to the sidecar: first the new fork is
/// written there, then the attribute is removed, so that at any moment the old or the new one
/// counts.
OSStatus moveToSidecar(const ItemLocator &item, const ForkAttribute &place,
                       const ForkChange &changed) {
    QByteArray before;
    const OSStatus status = changeMetadata(item, [&](MetadataChange &change) {
        return std::optional(planCopy(change, place, changed, &before));
    });
    return status != noErr ? status : changeMetadata(item, [&](MetadataChange &change) {
        return planAttributeRemovals(change, place, before);
    });
}

} // namespace

OSStatus changeResourceFork(const ItemLocator &item, const ForkChange &change) {
    const OSStatus status = changeMetadata(item, [&change](MetadataChange &attempt) {
        return std::optional(planFork(attempt, change));
    });
    const ForkAttribute *const place = status == dskFulErr || status == fileBoundsErr
                                           ? forkAttribute(AttributeNames(item.path()))
                                           : nullptr;
    return place ? moveToSidecar(item, *place, change) : status;
}

OSStatus writeResourceFork(const QByteArray &path, const QByteArray &fork) {
    OSStatus status = noErr;
    const auto item = ItemLocator::find(path, &status);
    return item ? changeResourceFork(*item, [&fork](QByteArrayView /*before*/,
                                                    OSStatus * /*status*/) { return fork; })
                : status;
}

} // namespace MWCore
