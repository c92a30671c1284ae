// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/metadata/FinderInfoPlaces.h"
#include "platform/metadata/MetadataChange.h"

namespace MWCore {
namespace {

/// The information to write to @p place. Only the fields that differ between @p read and @p written
/// change, because another program may have stored more in the place.
FinderInfo changedIn(const FinderInfoPlace &place, const FinderInfo &read,
                     const FinderInfo &written) {
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
    FinderFlags changed = read.flags ^ written.flags;
    if (changed & kColor)
        changed |= kColor; // the three bits of the label number change together
    info.flags = (info.flags & ~changed) | (written.flags & changed);
    return info;
}

/// Whether @p sidecar still holds the information that was read before it was opened for the
/// change.
bool holds(const AppleDouble &sidecar, const FinderInfo &info) {
    return FinderInfo::fromBytes(sidecar.content(kFinderInfoEntry)) == info;
}

std::optional<OSStatus> planSidecar(MetadataChange &change, const FinderInfo &before,
                                    const FinderInfo &after) {
    OSStatus status = noErr;
    AppleDouble *const sidecar = change.sidecar(&status);
    if (!sidecar)
        return status;
    if (!holds(*sidecar, before))
        return std::nullopt;
    sidecar->overwrite(kFinderInfoEntry, after.toBytes());
    return noErr;
}

/// Plans to write @p info to @p place.
std::optional<OSStatus> planPlace(MetadataChange &change, const FinderInfoPlace &place,
                                  const FinderInfo &info) {
    if (!place.convention)
        return planSidecar(change, place.info, info);
    const QByteArray value = place.convention->rewritten(place.value, info);
    change.set(place.convention->attribute, place.value,
               value.isEmpty() ? std::nullopt : std::optional(value));
    return noErr;
}

/// Where to write the information of an item that has none yet.
enum class NewPlace { Attribute, Sidecar };

std::optional<OSStatus> planNew(MetadataChange &change, const AttributeNames &names,
                                const FinderInfo &info, NewPlace place) {
    const Convention &convention = conventions().front();
    if (const OSStatus status = statusOfKind(change.item()); status != noErr)
        return status;
    if (names.contains(convention.attribute))
        return mapReadErr; // unknown format, which must not be overwritten
    if (place == NewPlace::Sidecar)
        return planSidecar(change, {}, info);
    change.set(convention.attribute, std::nullopt, convention.rewritten({}, info));
    return noErr;
}

/// The information to write to a place, given what the place that counts holds now.
using Wanted = std::function<FinderInfo(const FinderInfoPlace &place, const FinderInfo &read)>;

std::optional<OSStatus> planAll(MetadataChange &change, const Wanted &wantedIn, NewPlace newPlace) {
    MetadataReader look(change.path(), Sidecars::MayExist);
    FinderInfoPlaces places;
    if (const OSStatus found = findFinderInfoPlaces(look, places); found != noErr)
        return found;
    if (places.isEmpty()) {
        const FinderInfo info = wantedIn({nullptr, {}, {}}, {});
        return info.isNone() ? std::optional(noErr) : planNew(change, look.names(), info, newPlace);
    }
    const FinderInfoPlace *const chosen = firstWithInfo(places);
    const FinderInfo read = chosen ? chosen->info : FinderInfo();
    std::optional<OSStatus> outcome = noErr;
    for (const FinderInfoPlace &place : places)
        if (outcome == noErr)
            outcome = planPlace(change, place, wantedIn(place, read));
    return outcome;
}

OSStatus writeEverywhere(const ItemLocator &item, const Wanted &wantedIn) {
    const auto write = [&](NewPlace newPlace) {
        return changeMetadata(
            item, [&](MetadataChange &change) { return planAll(change, wantedIn, newPlace); });
    };
    const OSStatus status = write(NewPlace::Attribute);
    const bool needsSidecar = status == errFSOperationNotSupported && statusOfKind(item) == noErr;
    return needsSidecar ? write(NewPlace::Sidecar) : status;
}

} // namespace

OSStatus changeFinderInfo(const ItemLocator &item,
                          const std::function<void(FinderInfo &)> &change) {
    return writeEverywhere(item, [&](const FinderInfoPlace &place, const FinderInfo &read) {
        FinderInfo written = read;
        change(written);
        return changedIn(place, read, written);
    });
}

OSStatus changeFinderInfo(const QByteArray &path, const std::function<void(FinderInfo &)> &change) {
    OSStatus status = noErr;
    const auto item = ItemLocator::find(path, &status);
    return item ? changeFinderInfo(*item, change) : status;
}

OSStatus writeFinderInfo(const QByteArray &path, const FinderInfo &info) {
    return changeFinderInfo(path, [&info](FinderInfo &now) { now = info; });
}

OSStatus removeFinderInfo(const QByteArray &path) {
    OSStatus status = noErr;
    const auto item = ItemLocator::find(path, &status);
    const Wanted none = [](const FinderInfoPlace & /*place*/, const FinderInfo & /*read*/) {
        return FinderInfo();
    };
    return item ? writeEverywhere(*item, none) : status;
}

} // namespace MWCore
