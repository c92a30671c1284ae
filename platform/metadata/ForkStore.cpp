// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/metadata/conventions.h"
#include "platform/metadata/ExtendedAttributes.h"
#include "platform/metadata/MetadataStore.h"
#include "platform/metadata/Sidecar.h"

#include <algorithm>

namespace MWCore {
namespace {

/// An extended attribute that keeps resource forks.
struct ForkAttribute {
    const char *name;
    qsizetype trailing; ///< zeros behind the fork
};
constexpr ForkAttribute kForkAttributes[] = {{"user.com.apple.ResourceFork", 0},
                                             {"user.org.netatalk.ResourceFork", 0},
                                             {"user.DosStream.AFP_Resource:$DATA", 1},
                                             {"user.AFP_Resource", 1}};

const ForkAttribute *forkAttribute(const AttributeNames &names) {
    const auto *const found = std::ranges::find_if(
        kForkAttributes, [&names](const char *name) { return names.contains(name); },
        &ForkAttribute::name);
    return found == std::end(kForkAttributes) ? nullptr : found;
}

bool hasFinderInfo(const AttributeNames &names) {
    return std::ranges::any_of(
        conventions(), [&names](const char *name) { return names.contains(name); },
        &Convention::attribute);
}

/// From every place: otherwise one would come to light behind another.
OSStatus removeForks(const QByteArray &path, const AttributeNames &names) {
    for (const ForkAttribute &place : kForkAttributes) {
        const OSStatus status =
            names.contains(place.name) ? removeAttribute(path, place.name) : noErr;
        if (status != noErr)
            return status;
    }
    OSStatus status = noErr;
    const auto entry = sidecarEntry(path, kResourceForkEntry, 0, &status);
    if (!entry || entry->length == 0)
        return status;
    return changeSidecar(path,
                         [](AppleDouble &sidecar) { sidecar.replace(kResourceForkEntry, {}); });
}

} // namespace

bool mayHaveMetadataAttributes(int folder, const char *name, const QByteArray &path) {
    const AttributeNames names(folder, name, path);
    if (names.status() != noErr)
        return names.status() != errFSOperationNotSupported;
    return hasFinderInfo(names) || forkAttribute(names);
}

OSStatus resourceForkSize(const QByteArray &path, ForkSize *size, Sidecars sidecars) {
    *size = {};
    const AttributeNames names(path);
    OSStatus status = statusOfNames(path, names);
    if (status != noErr)
        return status;
    if (const ForkAttribute *const place = forkAttribute(names)) {
        size->logical = std::max<int64_t>(attributeLength(path, place->name) - place->trailing, 0);
        size->physical = size->logical;
        return noErr;
    }
    if (sidecars == Sidecars::Absent)
        return noErr;
    if (const auto entry = sidecarEntry(path, kResourceForkEntry, 0, &status))
        *size = {entry->length, entry->length > 0 ? entry->allocated : 0};
    return status;
}

std::optional<QByteArray> readResourceFork(const QByteArray &path, OSStatus *status) {
    const AttributeNames names(path);
    *status = statusOfNames(path, names);
    if (*status != noErr)
        return std::nullopt;
    if (const ForkAttribute *const place = forkAttribute(names)) {
        auto fork = attribute(path, place->name, status);
        if (fork)
            fork->chop(place->trailing);
        if (fork && fork->isEmpty())
            *status = resFNotFound;
        return *status == noErr ? fork : std::nullopt;
    }
    constexpr int64_t kWhole = INT64_MAX;
    auto entry = sidecarEntry(path, kResourceForkEntry, kWhole, status);
    if (*status == noErr && (!entry || entry->length == 0))
        *status = resFNotFound;
    return *status == noErr ? std::optional(std::move(entry->beginning)) : std::nullopt;
}

OSStatus writeResourceFork(const QByteArray &path, const QByteArray &fork) {
    const AttributeNames names(path);
    if (const OSStatus status = statusOfKind(path); status != noErr)
        return status;
    if (fork.isEmpty())
        return removeForks(path, names);
    if (const ForkAttribute *const place = forkAttribute(names))
        return setAttribute(path, place->name, fork + QByteArray(place->trailing, '\0'));
    if (fork.size() > kLargestSidecar)
        return fileBoundsErr; // its length may not fit into an entry
    return changeSidecar(
        path, [&fork](AppleDouble &sidecar) { sidecar.replace(kResourceForkEntry, fork); });
}

} // namespace MWCore
