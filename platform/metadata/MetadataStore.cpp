// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/metadata/MetadataStore.h"

#include "platform/foundation/FileSystemText.h"
#include "platform/foundation/Log.h"
#include "platform/metadata/conventions.h"
#include "platform/metadata/ExtendedAttributes.h"
#include "platform/metadata/Sidecar.h"

#include <algorithm>
#include <cerrno>

#include <QVarLengthArray>

#include <sys/stat.h>

namespace MWCore {
namespace {

/// An extended attribute that keeps resource forks.
struct ForkAttribute {
    const char *name;
    qsizetype trailing; ///< zeros behind the fork
};
constexpr ForkAttribute kForkAttributes[] = {{"user.com.apple.ResourceFork", 0},
                                             {"user.org.netatalk.ResourceFork", 0},
                                             {"user.DosStream.AFP_Resource:$DATA", 1}};

/// noErr for what extended attributes and sidecars are meant for.
OSStatus statusOfKind(const QByteArray &path) {
    struct stat item = {};
    if (lstat(path.constData(), &item) != 0)
        return statusFromErrno(errno);
    return S_ISREG(item.st_mode) || S_ISDIR(item.st_mode) ? noErr : errFSOperationNotSupported;
}

/// Whether there is anything at all; asked where extended attributes could not tell.
OSStatus statusOfExistence(const QByteArray &path) {
    struct stat item = {};
    return lstat(path.constData(), &item) == 0 ? noErr : statusFromErrno(errno);
}

OSStatus statusOfNames(const QByteArray &path, const AttributeNames &names) {
    return names.status() == errFSOperationNotSupported ? statusOfExistence(path) : names.status();
}

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

/// Changes all places or, as far as the system lets it, none. The sidecar, which needs most room,
/// comes first.
OSStatus storeEverywhere(const QByteArray &path, const Places &places, const FinderInfo &info) {
    for (qsizetype index = places.size() - 1; index >= 0; --index) {
        const OSStatus status = store(path, places[index], info);
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

const ForkAttribute *forkAttribute(const AttributeNames &names) {
    const auto *const found = std::ranges::find_if(
        kForkAttributes, [&names](const char *name) { return names.contains(name); },
        &ForkAttribute::name);
    return found == std::end(kForkAttributes) ? nullptr : found;
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
    if (!places.isEmpty())
        return storeEverywhere(path, places, info);
    return info.isNone() ? noErr : storeAnew(path, names, info);
}

OSStatus removeFinderInfo(const QByteArray &path) {
    return writeFinderInfo(path, FinderInfo());
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
    return changeSidecar(
        path, [&fork](AppleDouble &sidecar) { sidecar.replace(kResourceForkEntry, fork); });
}

} // namespace MWCore
