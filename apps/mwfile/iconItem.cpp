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
#include <MWCore/ResourceFile.h>

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

/// Why the file cannot store a resource; noErr if it can.
OSStatus forkStatus(const Item &file) {
    const QByteArray &path = file.reference.path;
    const qsizetype slash = path.lastIndexOf('/');
    FSRef parent;
    OSStatus status = FSPathMakeRef(slash == 0 ? "/" : path.first(slash), &parent);
    if (status == noErr)
        status = FSCreateResFile(parent, path.sliced(slash + 1), nullptr);
    return status == dupFNErr ? noErr : status;
}

/// The library only says that setting an icon failed, so the likely cause is looked for.
std::string causeAgainst(const Item &item, const IconFamily &family) {
    std::string obstacle = writingObstacle(bytesOf(item.path), family.data().size());
    if (!obstacle.empty())
        return obstacle;
    const OSStatus status = item.isFolder ? noErr : forkStatus(item);
    return status == noErr ? "its metadata cannot be written" : statusText(status);
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

/// Throws Failure if the folder still has an icon file.
void expectNoIconFile(const Item &folder) {
    FSRef file;
    const QByteArray path = folder.reference.path + "/Icon\r";
    if (FSPathMakeRef(path, &file) == noErr)
        throw Failure(folder.given + "/Icon\r", "cannot be deleted");
}

} // namespace

void iconSet(const IconItemOptions &options) {
    const Item item = itemFor(options.item);
    const IconFamily::Ptr family = familyFrom(options.icon);
    const bool isSet = item.isFolder
                           ? family->setAsCustomIconForDirectory(item.path, options.compatible)
                           : family->setAsCustomIconForFile(item.path, options.compatible);
    if (!isSet)
        throw Failure(item.given, causeAgainst(item, *family));
}

void iconRemove(const IconItemOptions &options) {
    const Item item = itemFor(options.item);
    const bool hadFlag = hasCustomIconFlag(item);
    const bool isRemoved = item.isFolder ? IconFamily::removeCustomIconFromDirectory(item.path)
                                         : IconFamily::removeCustomIconFromFile(item.path);
    if (isRemoved)
        return;
    if (!hadFlag)
        throw Failure(item.given, "has no custom icon");
    clearCustomIconFlag(item);
    if (item.isFolder)
        expectNoIconFile(item);
}

} // namespace MWCore::mwfile
