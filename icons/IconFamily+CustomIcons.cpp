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

namespace MWCore {
namespace {

constexpr int16_t kCustomIconResource = -16455;
constexpr const char *kIconFileName = "Icon\r";
constexpr uint32_t kIconFileType = fourCharCode("icon");
constexpr uint32_t kIconFileCreator = fourCharCode("MACS");

/// The elements that are stored as resources of their own for older programs.
constexpr uint32_t kCompatibleElements[] = {fourCharCode("icl8"), fourCharCode("ICN#"),
                                            fourCharCode("ics8"), fourCharCode("ics#")};

std::optional<FSRef> referenceTo(const QString &path) {
    constexpr bool kCreate = false;
    FSRef ref;
    return CarbonFSRefCreation::getFSRef(path, &ref, kCreate) ? std::optional(ref) : std::nullopt;
}

std::optional<FSRef> parentOf(const QString &path) {
    const auto bytes = fileSystemRepresentation(path);
    return bytes ? referenceTo(stringWithFileSystemRepresentation(PathParts(*bytes).parent))
                 : std::nullopt;
}

/// Whether the reference is to a folder; false if it is to a link to one.
bool isFolder(const FSRef &ref) {
    FSCatalogInfo info;
    return FSGetCatalogInfo(ref, kFSCatInfoNodeFlags, &info) == noErr &&
           (info.nodeFlags & kFSNodeIsDirectoryMask);
}

OSStatus setHasCustomIcon(const FSRef &ref, bool hasCustomIcon) {
    return FSChangeFinderInfo(ref, [hasCustomIcon](FinderInfo &info) {
        info.flags.setFlag(kHasBeenInited, false);
        info.flags.setFlag(kHasCustomIcon, hasCustomIcon);
    });
}

bool notify(const FSRef &folder) {
    return FNNotify(folder, kFNDirectoryModifiedMessage) == noErr;
}

/// The file, which is created as an empty file with an empty fork if nothing is there. nullopt for
/// a folder, and for anything that cannot have a fork.
std::optional<FSRef> fileWithFork(const FSRef &parent, const QString &path) {
    const auto bytes = fileSystemRepresentation(path);
    if (const auto existing = referenceTo(path); !bytes || (existing && isFolder(*existing)))
        return std::nullopt;
    FSRef file;
    const OSStatus status = FSCreateResFile(parent, PathParts(*bytes).name, &file);
    if (status == dupFNErr)
        return referenceTo(path);
    return status == noErr ? std::optional(file) : std::nullopt;
}

} // namespace

bool IconFamily::addResourceType(uint32_t type, int16_t asResID, ResourceFile &file) const {
    OSStatus status = noErr;
    const auto data = GetIconFamilyData(hIconFamily_, type, &status);
    return data && !data->isEmpty() && file.addResource(type, asResID, {}, *data) == noErr;
}

/// Adds the family, and the elements for older programs, to an open fork.
bool IconFamily::addCustomIcon(ResourceFile &file, bool withCompatibility) const {
    if (file.addResource(kIconFamilyType, kCustomIconResource, {}, hIconFamily_) != noErr)
        return false;
    if (withCompatibility)
        for (const uint32_t type : kCompatibleElements)
            (void)addResourceType(type, kCustomIconResource, file);
    return true;
}

// Changing metadata preserves the file's modification date (MetadataStore.h), so it is not put
// back, which could undo what another program sets meanwhile.
bool IconFamily::setAsCustomIconForFile(const QString &path, bool withCompatibility) const {
    const auto parent = parentOf(path);
    const auto file = parent ? fileWithFork(*parent, path) : std::nullopt;
    if (!file)
        return false;
    OSStatus status = noErr;
    const auto fork = ResourceFile::open(*file, fsRdWrPerm, &status);
    return fork && addCustomIcon(*fork, withCompatibility) && fork->close() == noErr &&
           setHasCustomIcon(*file, true) == noErr && notify(*parent);
}

bool IconFamily::removeCustomIconFromFile(const QString &path) {
    const auto file = referenceTo(path);
    OSStatus status = noErr;
    const auto fork = file ? ResourceFile::open(*file, fsRdWrPerm, &status) : nullptr;
    if (!fork)
        return false;
    status = fork->removeResource(kIconFamilyType, kCustomIconResource);
    if (status != noErr && status != resNotFound)
        return false;
    const auto parent = parentOf(path);
    return fork->close() == noErr && parent && setHasCustomIcon(*file, false) == noErr &&
           notify(*parent);
}

bool IconFamily::setAsCustomIconForDirectory(const QString &path, bool withCompatibility) const {
    const auto folder = referenceTo(path);
    if (!folder || !isFolder(*folder))
        return false;
    OSStatus status = noErr;
    const auto iconFile = locatorIn(*folder, kIconFileName, &status);
    const auto resources = ResourceFile::makeUnattached();
    if (!iconFile || !addCustomIcon(*resources, withCompatibility))
        return false;
    FinderInfo info;
    info.type = kIconFileType;
    info.creator = kIconFileCreator;
    info.flags = kIsInvisible;
    const auto fork = resources->toBytes();
    return fork && replaceItem(*iconFile, info, *fork) == noErr &&
           setHasCustomIcon(*folder, true) == noErr && notify(*folder);
}

bool IconFamily::removeCustomIconFromDirectory(const QString &path) {
    const auto folder = referenceTo(path);
    if (folder && (setHasCustomIcon(*folder, false) != noErr || !notify(*folder)))
        return false;
    OSStatus status = noErr;
    const auto iconFile = folder ? locatorIn(*folder, kIconFileName, &status) : std::nullopt;
    return iconFile && removeItemAndSidecar(*iconFile) == noErr;
}

} // namespace MWCore
