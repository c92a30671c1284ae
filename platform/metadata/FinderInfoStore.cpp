// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/foundation/FileSystemText.h"
#include "platform/foundation/Log.h"
#include "platform/metadata/conventions.h"
#include "platform/metadata/ExtendedAttributes.h"
#include "platform/metadata/MetadataStore.h"
#include "platform/metadata/Sidecar.h"

#include <algorithm>

#include <QVarLengthArray>

namespace MWCore {
namespace {

/// A place that keeps Finder information of an item.
struct Place {
    const Convention *convention; ///< null for the sidecar
    QByteArray value;             ///< of the extended attribute
    FinderInfo info;

    [[nodiscard]] const char *name() const {
        return convention ? convention->attribute : "a ._ file";
    }
};
using Places = QVarLengthArray<Place, 4>;

OSStatus addAttributes(const QByteArray &path, const AttributeNames &names, Places &places) {
    OSStatus failure = noErr;
    for (const Convention &convention : conventions()) {
        if (!names.contains(convention.attribute))
            continue;
        OSStatus status = noErr;
        const auto value = attribute(path, convention.attribute, &status);
        failure = failure == noErr ? status : failure;
        if (const auto info = value ? convention.read(*value) : std::nullopt)
            places.append({&convention, *value, *info});
    }
    return failure;
}

OSStatus addSidecar(const QByteArray &path, Places &places) {
    OSStatus status = noErr;
    const auto entry = sidecarEntry(path, kFinderInfoEntry, FinderInfo::kLength, &status);
    if (!entry || entry->beginning.size() < FinderInfo::kLength)
        return status;
    // Every sidecar has the 32 bytes, also one that is there for a fork alone.
    const FinderInfo info = FinderInfo::fromBytes(entry->beginning);
    if (!info.isNone())
        places.append({nullptr, {}, info});
    return status;
}

/// The places in the order in which they count. What cannot be read is no place; it is a failure
/// only where there is no other.
OSStatus findPlaces(const QByteArray &path, const AttributeNames &names, Sidecars sidecars,
                    Places &places) {
    if (const OSStatus status = statusOfNames(path, names); status != noErr)
        return status;
    const OSStatus attributes = addAttributes(path, names, places);
    const OSStatus sidecar = sidecars == Sidecars::Absent ? noErr : addSidecar(path, places);
    return !places.isEmpty() ? noErr : attributes != noErr ? attributes : sidecar;
}

/// The first place that says anything, or null.
const Place *firstThatSays(const Places &places) {
    const auto *const place = std::ranges::find_if_not(places, &FinderInfo::isNone, &Place::info);
    return place == places.end() ? nullptr : &*place;
}

void reportDisagreement(const QByteArray &path, const Places &places, const Place &chosen) {
    for (const Place &place : places)
        if (!place.info.isNone() && place.info != chosen.info)
            qCWarning(mwcoreLog).nospace() // a quoted path: names can hold line ends and worse
                << "Finder information of " << stringWithFileSystemRepresentation(path) << " in "
                << chosen.name() << " and in " << place.name() << " differs; the first counts";
}

OSStatus store(const QByteArray &path, const Place &place, const FinderInfo &info) {
    if (!place.convention)
        return changeSidecar(path, [&info](AppleDouble &sidecar) {
            sidecar.overwrite(kFinderInfoEntry, info.toBytes());
        });
    const QByteArray value = place.convention->rewritten(place.value, info);
    return value.isEmpty() ? removeAttribute(path, place.convention->attribute)
                           : setAttribute(path, place.convention->attribute, value);
}

/// What a place is to say. Only what differs between what was read and what is written changes
/// there: another program may have left more in it.
FinderInfo changedIn(const Place &place, const FinderInfo &read, const FinderInfo &written) {
    if (place.info.isNone())
        return written;
    FinderInfo info = place.info;
    const auto take = [&](auto FinderInfo::*field) {
        if (read.*field != written.*field)
            info.*field = written.*field;
    };
    take(&FinderInfo::type);
    take(&FinderInfo::creator);
    take(&FinderInfo::locationV);
    take(&FinderInfo::locationH);
    take(&FinderInfo::reserved);
    take(&FinderInfo::extended);
    unsigned changed = read.flags ^ written.flags;
    if (changed & kColor)
        changed |= kColor; // a number of three bits: some of them alone are another label
    info.flags = static_cast<uint16_t>((info.flags & ~changed) | (written.flags & changed));
    return info;
}

/// Changes all places or, as far as the system lets it, none. The sidecar, which needs most room,
/// comes first.
template <typename Wanted>
OSStatus storeEverywhere(const QByteArray &path, const Places &places, const Wanted &wantedIn) {
    for (qsizetype index = places.size() - 1; index >= 0; --index) {
        const OSStatus status = store(path, places[index], wantedIn(places[index]));
        if (status == noErr)
            continue;
        while (++index < places.size())
            (void)store(path, places[index], places[index].info);
        return status;
    }
    return noErr;
}

OSStatus storeAnew(const QByteArray &path, const AttributeNames &names, const FinderInfo &info) {
    const Place place = {conventions().data(), {}, {}};
    if (const OSStatus status = statusOfKind(path); status != noErr)
        return status;
    if (names.contains(place.name()))
        return mapReadErr; // of another form, and not ours to throw away
    const OSStatus status = store(path, place, info);
    return status == errFSOperationNotSupported ? store(path, {nullptr, {}, {}}, info) : status;
}

} // namespace

OSStatus readFinderInfo(const QByteArray &path, FinderInfo *info, Sidecars sidecars) {
    Places places;
    const OSStatus status = findPlaces(path, AttributeNames(path), sidecars, places);
    const Place *const chosen = firstThatSays(places);
    *info = chosen ? chosen->info : FinderInfo();
    if (places.size() > 1 && chosen)
        reportDisagreement(path, places, *chosen);
    return status;
}

OSStatus writeFinderInfo(const QByteArray &path, const FinderInfo &info) {
    const AttributeNames names(path);
    Places places;
    const OSStatus status = findPlaces(path, names, Sidecars::MayExist, places);
    if (status != noErr)
        return status;
    if (places.isEmpty())
        return info.isNone() ? noErr : storeAnew(path, names, info);
    const Place *const chosen = firstThatSays(places);
    const FinderInfo read = chosen ? chosen->info : FinderInfo();
    return storeEverywhere(
        path, places, [&read, &info](const Place &place) { return changedIn(place, read, info); });
}

OSStatus removeFinderInfo(const QByteArray &path) {
    Places places;
    const OSStatus status = findPlaces(path, AttributeNames(path), Sidecars::MayExist, places);
    return status != noErr
               ? status
               : storeEverywhere(path, places, [](const Place &) { return FinderInfo(); });
}

} // namespace MWCore
