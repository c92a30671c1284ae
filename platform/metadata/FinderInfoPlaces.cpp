// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/metadata/FinderInfoPlaces.h"

#include <algorithm>

namespace MWCore {
namespace {

OSStatus addAttributes(const QByteArray &path, const AttributeNames &names,
                       FinderInfoPlaces &places) {
    OSStatus failure = noErr;
    for (const Convention &convention : conventions()) {
        if (!names.contains(convention.attribute))
            continue;
        OSStatus status = noErr;
        const auto value = attribute(path, convention.attribute, &status, convention.longest);
        if (status == fileBoundsErr)
            continue; // too long for this convention
        failure = failure == noErr ? status : failure;
        if (const auto info = value ? convention.read(*value) : std::nullopt)
            places.append({&convention, *value, *info});
    }
    return failure;
}

OSStatus addSidecar(MetadataReader &reader, FinderInfoPlaces &places) {
    OSStatus status = noErr;
    const auto entry = reader.sidecarEntry(kFinderInfoEntry, FinderInfo::kLength, &status);
    if (!entry)
        return status;
    // Every sidecar has the 32 bytes, even one that holds only a fork.
    const FinderInfo info = FinderInfo::fromBytes(entry->beginning);
    if (!info.isNone())
        places.append({nullptr, {}, info});
    return status;
}

} // namespace

OSStatus findFinderInfoPlaces(MetadataReader &reader, FinderInfoPlaces &places) {
    if (reader.status() != noErr)
        return reader.status();
    const OSStatus attributes = addAttributes(reader.path(), reader.names(), places);
    const OSStatus sidecar = addSidecar(reader, places);
    return !places.isEmpty() ? noErr : attributes != noErr ? attributes : sidecar;
}

const FinderInfoPlace *firstWithInfo(const FinderInfoPlaces &places) {
    const auto *const place =
        std::ranges::find_if_not(places, &FinderInfo::isNone, &FinderInfoPlace::info);
    return place == places.end() ? nullptr : &*place;
}

} // namespace MWCore
