// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "icons/IconFamily.h"

#include "platform/catalogue/ChangeNotification.h"
#include "platform/catalogue/FileCatalogue.h"
#include "platform/catalogue/ResourceFile.h"
#include "platform/files/PathParts.h"
#include "platform/foundation/FileSystemText.h"
#include "platform/metadata/ItemReplacement.h"
#include "platform/references/FSSpec.h"
#include "platform/references/ReferenceLocator.h"
#include "platform/workspace/icons/IconServices.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace MWCore {
namespace {

constexpr uint32_t kIconFileType = fourCharCode("icon");
constexpr uint32_t kIconFileCreator = fourCharCode("MACS");

/// The elements that are stored as resources of their own for older programs.
constexpr uint32_t kCompatibleElements[] = {fourCharCode("icl8"), fourCharCode("ICN#"),
                                            fourCharCode("ics8"), fourCharCode("ics#")};

OSStatus makeReference(const QString &path, FSRef *ref) {
    constexpr bool kCreate = false;
    if (CarbonFSRefCreation::getFSRef(path, ref, kCreate))
        return noErr;
    const auto bytes = fileSystemRepresentation(path);
    const OSStatus status = bytes ? FSPathMakeRef(*bytes, ref) : bdNamErr;
    return status == noErr ? fnfErr : status; // a link to nothing
}

OSStatus makeReferenceToParent(const QString &path, FSRef *parent) {
    const auto bytes = fileSystemRepresentation(path);
    return bytes
               ? makeReference(stringWithFileSystemRepresentation(PathParts(*bytes).parent), parent)
               : bdNamErr;
}

enum class ItemKind : uint8_t { Folder, Other };

/// noErr if the item may have a custom icon of its own and be changed. A link to a folder is no
/// folder.
OSStatus statusOfItem(const FSRef &ref, ItemKind kind) {
    FSCatalogInfo info;
    const OSStatus status = FSGetCatalogInfo(ref, kFSCatInfoNodeFlags, &info);
    if (status != noErr)
        return status;
    const bool isFolder = info.nodeFlags & kFSNodeIsDirectoryMask;
    if (isFolder != (kind == ItemKind::Folder))
        return isFolder ? errFSOperationNotSupported : errFSNotAFolder;
    return info.nodeFlags & kFSNodeLockedMask ? permErr : noErr;
}

OSStatus setHasCustomIcon(const FSRef &ref, bool hasCustomIcon) {
    return FSChangeFinderInfo(ref, [hasCustomIcon](FinderInfo &info) {
        info.flags.setFlag(kHasBeenInited, false);
        info.flags.setFlag(kHasCustomIcon, hasCustomIcon);
    });
}

/// Sets the flag of an item whose icon was set or removed, and reports the change of @p folder.
OSStatus finish(const FSRef &item, bool hasCustomIcon, const FSRef &folder) {
    const OSStatus status = setHasCustomIcon(item, hasCustomIcon);
    return status == noErr ? FNNotify(folder, kFNDirectoryModifiedMessage) : status;
}

/// Makes @p file refer to the file at @p path, which is created as an empty file if nothing is
/// there and gets an empty fork if it has none.
OSStatus makeFileWithFork(const FSRef &parent, const QString &path, FSRef *file) {
    OSStatus status = makeReference(path, file);
    const bool isThere = status == noErr;
    if (isThere)
        status = statusOfItem(*file, ItemKind::Other);
    if (status != noErr && status != fnfErr)
        return status;
    const QByteArray name = PathParts(*fileSystemRepresentation(path)).name;
    status = FSCreateResFile(parent, name, isThere ? nullptr : file);
    return isThere && status == dupFNErr ? noErr : status;
}

/// Opens the fork of @p file, changes it with @p change and writes it.
template <typename Change> OSStatus changeFork(const FSRef &file, Change change) {
    OSStatus status = noErr;
    const auto fork = ResourceFile::open(file, fsRdWrPerm, &status);
    if (fork)
        status = change(*fork);
    return status == noErr ? fork->close() : status;
}

OSStatus removeIcon(ResourceFile &fork) {
    const OSStatus status = fork.removeResource(kIconFamilyType, kCustomIconResource);
    return status == resNotFound ? noErr : status;
}

OSStatus removeFromFile(const QString &path) {
    FSRef file;
    FSRef parent;
    OSStatus status = makeReference(path, &file);
    if (status == noErr)
        status = makeReferenceToParent(path, &parent);
    if (status == noErr)
        status = statusOfItem(file, ItemKind::Other);
    if (status == noErr)
        status = changeFork(file, removeIcon);
    return status == noErr ? finish(file, false, parent) : status;
}

OSStatus removeFromFolder(const QString &path) {
    FSRef folder;
    OSStatus status = makeReference(path, &folder);
    if (status == noErr)
        status = statusOfItem(folder, ItemKind::Folder);
    if (status == noErr)
        status = finish(folder, false, folder);
    const auto iconFile =
        status == noErr ? locatorIn(folder, kFolderIconFile, &status) : std::nullopt;
    return iconFile ? removeItemAndSidecar(*iconFile) : status;
}

/// Whether an operation succeeded; stores its status if that is wanted.
bool isDone(OSStatus result, OSStatus *status) {
    if (status)
        *status = result;
    return result == noErr;
}

} // namespace

bool IconFamily::addResourceType(uint32_t type, int16_t asResID, ResourceFile &file) const {
    OSStatus status = noErr;
    const auto data = GetIconFamilyData(hIconFamily_, type, &status);
    return data && !data->isEmpty() && file.addResource(type, asResID, {}, *data) == noErr;
}

/// Adds the family, and the elements for older programs, to an open fork.
OSStatus IconFamily::addCustomIcon(ResourceFile &file, bool withCompatibility) const {
    const OSStatus status =
        file.addResource(kIconFamilyType, kCustomIconResource, {}, hIconFamily_);
    if (status == noErr && withCompatibility)
        for (const uint32_t type : kCompatibleElements)
            (void)addResourceType(type, kCustomIconResource, file);
    return status;
}

// Changing metadata preserves the file's modification date (MetadataStore.h), so it is not put
// back, which could undo what another program sets meanwhile.
OSStatus IconFamily::setForFile(const QString &path, bool withCompatibility) const {
    FSRef parent;
    FSRef file;
    OSStatus status = makeReferenceToParent(path, &parent);
    if (status == noErr)
        status = makeFileWithFork(parent, path, &file);
    if (status == noErr)
        status = changeFork(file, [this, withCompatibility](ResourceFile &fork) {
            return addCustomIcon(fork, withCompatibility);
        });
    return status == noErr ? finish(file, true, parent) : status;
}

OSStatus IconFamily::setForFolder(const QString &path, bool withCompatibility) const {
    FSRef folder;
    OSStatus status = makeReference(path, &folder);
    if (status == noErr)
        status = statusOfItem(folder, ItemKind::Folder);
    const auto iconFile =
        status == noErr ? locatorIn(folder, kFolderIconFile, &status) : std::nullopt;
    if (!iconFile)
        return status;
    const auto resources = ResourceFile::makeUnattached();
    status = addCustomIcon(*resources, withCompatibility);
    const auto fork = status == noErr ? resources->toBytes() : std::nullopt;
    if (!fork)
        return status == noErr ? fileBoundsErr : status;
    FinderInfo info;
    info.type = kIconFileType;
    info.creator = kIconFileCreator;
    info.flags = kIsInvisible;
    status = replaceItem(*iconFile, info, *fork);
    return status == noErr ? finish(folder, true, folder) : status;
}

bool IconFamily::setAsCustomIconForFile(const QString &path, bool withCompatibility,
                                        OSStatus *status) const {
    return isDone(setForFile(path, withCompatibility), status);
}

bool IconFamily::removeCustomIconFromFile(const QString &path, OSStatus *status) {
    return isDone(removeFromFile(path), status);
}

bool IconFamily::setAsCustomIconForDirectory(const QString &path, bool withCompatibility,
                                             OSStatus *status) const {
    return isDone(setForFolder(path, withCompatibility), status);
}

bool IconFamily::removeCustomIconFromDirectory(const QString &path, OSStatus *status) {
    return isDone(removeFromFolder(path), status);
}

} // namespace MWCore
