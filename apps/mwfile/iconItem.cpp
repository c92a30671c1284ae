// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "commands.h"
#include "Failure.h"
#include "IconOutput.h"
#include "IconPictures.h"
#include "IconSource.h"
#include "LocalItem.h"
#include "ShownMetadata.h"
#include "TextBytes.h"

#include <MWCore/FileCatalogue.h>

namespace MWCore::mwfile {
namespace {

/// An item that can have a custom icon.
struct Item {
    std::string given; ///< its path on the command line
    QString path;
    FSRef reference;
    bool isFolder;
};

/// Throws Failure if it is neither a file nor a folder.
Item itemFor(const std::string &given) {
    const MXFileSystemObject::Ptr object = itemAtPath(given);
    const MXNodeKind kind = object->nodeKind();
    if (kind == MXNodeKind::Link)
        throw Failure(given, "a link; name its target");
    if (kind != MXNodeKind::File && kind != MXNodeKind::Folder)
        throw Failure(given, "only files and folders have custom icons");
    const QString path = object->completePath();
    if (isLocked(bytesOf(path)))
        throw Failure(given, "locked; mwfile lock turns that off");
    return {given, path, referenceTo(bytesOf(path)), kind == MXNodeKind::Folder};
}

/// Throws Failure if the icon cannot be made.
IconFamily::Ptr familyFrom(const std::string &path) {
    if (const auto bytes = familyInFile(path)) {
        IconFamily::Ptr family = IconFamily::initWithData(*bytes);
        if (family->imageWithAllReps().isNull())
            throw Failure(path, "has no image that can be decoded");
        return family;
    }
    IconPictures pictures;
    pictures.add(path);
    return pictures.modernFamily();
}

bool hasCustomIconFlag(const Item &item) {
    FSCatalogInfo info;
    return FSGetCatalogInfo(item.reference, kFSCatInfoFinderInfo, &info) == noErr &&
           info.finderInfo.flags.testFlag(kHasCustomIcon);
}

/// Makes an item show no icon of which something is missing.
void clearCustomIconFlag(const Item &item) {
    const OSStatus status = FSChangeFinderInfo(
        item.reference, [](FinderInfo &info) { info.flags.setFlag(kHasCustomIcon, false); });
    if (status != noErr)
        throw Failure(item.given, status);
}

} // namespace

void iconSet(const IconItemOptions &options) {
    const Item item = itemFor(options.item);
    const IconFamily::Ptr family = familyFrom(options.icon);
    OSStatus status = noErr;
    const bool isSet =
        item.isFolder ? family->setAsCustomIconForDirectory(item.path, options.compatible, &status)
                      : family->setAsCustomIconForFile(item.path, options.compatible, &status);
    if (!isSet)
        throw Failure(item.given, status);
}

void iconRemove(const IconItemOptions &options) {
    const Item item = itemFor(options.item);
    const bool hadFlag = hasCustomIconFlag(item);
    OSStatus status = noErr;
    const bool isRemoved = item.isFolder
                               ? IconFamily::removeCustomIconFromDirectory(item.path, &status)
                               : IconFamily::removeCustomIconFromFile(item.path, &status);
    if (isRemoved)
        return;
    if (status != (item.isFolder ? fnfErr : resFNotFound))
        throw Failure(item.given, status);
    if (!hadFlag)
        throw Failure(item.given, "has no custom icon");
    if (!item.isFolder) // the flag of a folder is cleared already
        clearCustomIconFlag(item);
}

} // namespace MWCore::mwfile
