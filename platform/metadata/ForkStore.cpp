// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/metadata/conventions.h"
#include "platform/metadata/ForkAttributes.h"
#include "platform/metadata/ForkReader.h"
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
        size->logical = place->forkLength(length);
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
    const auto fork = ForkReader::open(path, status);
    return fork ? fork->whole(status) : std::nullopt;
}

} // namespace MWCore
