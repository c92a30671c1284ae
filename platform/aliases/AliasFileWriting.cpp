// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/aliases/Aliases.h"
#include "platform/aliases/AliasFileFormat.h"
#include "platform/aliases/FileUrl.h"
#include "platform/files/AccessRights.h"
#include "platform/files/AtomicFile.h"
#include "platform/files/PathParts.h"
#include "platform/formats/DesktopEntry.h"
#include "platform/formats/ResourceMap.h"
#include "platform/metadata/conventions.h"
#include "platform/metadata/ExtendedAttributes.h"
#include "platform/metadata/MetadataChange.h"
#include "platform/references/AliasResolution.h"

#include <sys/stat.h>

namespace MWCore {
namespace {

OSStatus writeDesktopEntry(const QByteArray &target, const QByteArray &record,
                           const ItemLocator &place) {
    DesktopEntry entry;
    // A name for people; invalid UTF-8 would make the whole entry invalid.
    const QByteArray last = PathParts(target).name;
    const QString name = last.isEmpty() ? "/" : QString::fromUtf8(last);
    const bool isWhole =
        entry.setValue(DesktopEntry::kMainGroup, "Type", "Link") &&
        entry.setValue(DesktopEntry::kMainGroup, "Name", name) &&
        entry.setValue(DesktopEntry::kMainGroup, "URL", QString::fromLatin1(fileUrl(target))) &&
        entry.setValue(DesktopEntry::kMainGroup, kAliasRecordKey,
                       QString::fromLatin1(record.toBase64()));
    if (!isWhole || !place.name().endsWith(kDesktopEntrySuffix))
        return bdNamErr;
    OSStatus status = noErr;
    auto file = AtomicFile::begin(place, &status);
    if (!file)
        return status;
    return file->isThere() ? dupFNErr : file->replace(entry.toBytes(), accessOfNewFile());
}

FinderInfo aliasInfo() {
    FinderInfo info;
    info.type = kAliasFileType;
    info.creator = kAliasFileCreator;
    info.flags = kIsAlias;
    return info;
}

/// Whether a sidecar without an item holds nothing but an alias, as a killed process may leave it.
bool isLeftOver(const AppleDouble &sidecar) {
    return sidecar.isEmpty() ||
           FinderInfo::fromBytes(sidecar.content(kFinderInfoEntry)) == aliasInfo();
}

/// Marks the item as an alias in an extended attribute as well, where a listing looks first. If the
/// file system has none, the sidecar must do.
void markItem(const ItemLocator &place) {
    (void)changeMetadata(place, [](MetadataChange &change) {
        const Convention &plain = conventions().front();
        if (!AttributeNames(change.path()).contains(plain.attribute))
            change.set(plain.attribute, std::nullopt, plain.rewritten({}, aliasInfo()));
        return std::optional(noErr);
    });
}

/// Writes all or nothing: an empty file without its metadata would lead nowhere and take the name.
/// So the metadata is written first, and all at once.
OSStatus writeFinderAlias(const QByteArray &record, const ItemLocator &place) {
    ResourceMap map;
    map.put({kAliasResource, 0, std::nullopt, 0, record});
    const auto fork = map.toBytes();
    if (!fork)
        return fileBoundsErr;
    const OSStatus made = makeItemWithSidecar(place, isLeftOver, [&fork](AppleDouble &sidecar) {
        sidecar.overwrite(kFinderInfoEntry, aliasInfo().toBytes());
        sidecar.replace(kResourceForkEntry, *fork);
    });
    if (made == noErr)
        markItem(place);
    return made;
}

} // namespace

OSStatus FSCreateAliasFile(const FSRef &target, const QByteArray &path, AliasFileForm form) {
    struct stat item = {};
    OSStatus status = noErr;
    const auto place = ItemLocator::find(path, &status);
    if (!place)
        return status;
    if (place->examine(&item) == noErr)
        return dupFNErr;
    FSRef now;
    QByteArray targetPath;
    QByteArray record;
    status = currentPath(target, &targetPath);
    if (status == noErr)
        status = FSPathMakeRef(targetPath, &now);
    if (status == noErr)
        status = FSNewAlias(now, &record);
    if (status != noErr)
        return status;
    return form == AliasFileForm::Finder ? writeFinderAlias(record, *place)
                                         : writeDesktopEntry(now.path, record, *place);
}

} // namespace MWCore
