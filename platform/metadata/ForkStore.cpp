// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/metadata/conventions.h"
#include "platform/metadata/ForkAttributes.h"
#include "platform/metadata/MetadataReader.h"

#include <algorithm>

namespace MWCore {
namespace {

bool hasFinderInfo(const AttributeNames &names) {
    return std::ranges::any_of(
        conventions(), [&names](const char *name) { return names.contains(name); },
        &Convention::attribute);
}

} // namespace

bool mayHaveMetadataAttributes(int folder, const char *name, const QByteArray &path) {
    const AttributeNames names(folder, name, path);
    if (names.status() != noErr)
        return names.status() != errFSOperationNotSupported;
    return hasFinderInfo(names) || forkAttribute(names);
}

OSStatus resourceForkSize(MetadataReader &look, ForkSize *size) {
    *size = {};
    OSStatus status = look.status();
    if (status != noErr)
        return status;
    if (const ForkAttribute *const place = forkAttribute(look.names())) {
        const int64_t length = attributeLength(look.path(), place->name);
        size->logical = std::max<int64_t>(length - place->trailing, 0);
        size->physical = size->logical;
        return noErr;
    }
    if (const auto entry = look.sidecarEntry(kResourceForkEntry, 0, &status))
        *size = {entry->length, entry->length > 0 ? entry->allocated : 0};
    return status;
}

OSStatus resourceForkSize(const QByteArray &path, ForkSize *size, Sidecars sidecars) {
    MetadataReader look(path, sidecars);
    return resourceForkSize(look, size);
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

} // namespace MWCore
