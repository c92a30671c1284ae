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

OSStatus resourceForkSize(MetadataReader &reader, ForkSize *size) {
    *size = {};
    OSStatus status = reader.status();
    if (status != noErr)
        return status;
    if (const ForkAttribute *const place = forkAttribute(reader.names())) {
        const int64_t length = attributeLength(reader.path(), place->name);
        size->logical = place->forkLength(length);
        size->physical = size->logical;
        return noErr;
    }
    if (const auto entry = reader.sidecarEntry(kResourceForkEntry, 0, &status))
        *size = {entry->length, entry->length > 0 ? entry->allocated : 0};
    return status;
}

OSStatus resourceForkSize(const QByteArray &path, ForkSize *size, Sidecars sidecars) {
    MetadataReader reader(path, sidecars);
    return resourceForkSize(reader, size);
}

std::optional<QByteArray> readResourceFork(const QByteArray &path, OSStatus *status) {
    const auto fork = ForkReader::open(path, status);
    return fork ? fork->whole(status) : std::nullopt;
}

} // namespace MWCore
