// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/foundation/FileSystemText.h"
#include "platform/foundation/Log.h"
#include "platform/metadata/FinderInfoPlaces.h"

namespace MWCore {
namespace {

void reportDisagreement(const QByteArray &path, const FinderInfoPlaces &places,
                        const FinderInfoPlace &chosen) {
    for (const FinderInfoPlace &place : places)
        if (!place.info.isNone() && place.info != chosen.info)
            qCWarning(mwcoreLog).nospace() // quotes the path: names can contain line ends
                << "Finder information of " << stringWithFileSystemRepresentation(path) << " in "
                << chosen.name() << " and in " << place.name() << " differs; the first counts";
}

} // namespace

OSStatus readFinderInfo(MetadataReader &reader, FinderInfo *info) {
    FinderInfoPlaces places;
    const OSStatus status = findFinderInfoPlaces(reader, places);
    const FinderInfoPlace *const chosen = firstWithInfo(places);
    *info = chosen ? chosen->info : FinderInfo();
    if (places.size() > 1 && chosen)
        reportDisagreement(reader.path(), places, *chosen);
    return status;
}

OSStatus readFinderInfo(const QByteArray &path, FinderInfo *info, Sidecars sidecars) {
    MetadataReader reader(path, sidecars);
    return readFinderInfo(reader, info);
}

} // namespace MWCore
