// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "IconSource.h"

#include "Failure.h"
#include "ItemPath.h"
#include "LocalItem.h"
#include "OffscreenGraphics.h"
#include "ShownMetadata.h"

#include <MWCore/IconServices.h>
#include <MWCore/ItemIcon.h>

#include <algorithm>
#include <cctype>
#include <string_view>

namespace MWCore::mwfile {
namespace {

FSRef referenceToTarget(const std::string &path) {
    return referenceTo(resolvedPath(path));
}

/// Why the item at @p path gives no family.
[[noreturn]] void throwMissing(const std::string &path, OSStatus reading, OSStatus customIcon) {
    if (customIcon == mapReadErr)
        throw Failure(path, "its custom icon is damaged");
    if (reading == permErr || reading == ioErr || reading == fileBoundsErr)
        throw Failure(path, reading);
    if (hasExtension(path, ".icns"))
        throw Failure(path, "not an icon family");
    throw Failure(path, "not an icon family, and has no custom icon");
}

/// The image of the family in the file at @p path that fits best, scaled.
QImage ownImage(const std::string &path, int pixels) {
    IconRef icon;
    icon.file = QByteArray::fromStdString(resolvedPath(path));
    QImage image = ItemIcon::init(icon)->image(pixels);
    if (image.isNull())
        throw Failure(path, "has no image that can be decoded");
    return image;
}

} // namespace

bool hasExtension(const std::string &path, const std::string &extension) {
    if (path.size() <= extension.size())
        return false;
    const std::string_view end = std::string_view(path).substr(path.size() - extension.size());
    return std::ranges::equal(end, extension, [](unsigned char character, unsigned char lower) {
        return std::tolower(character) == lower;
    });
}

bool isIconset(const std::string &path) {
    return hasExtension(path.substr(0, path.find_last_not_of('/') + 1), ".iconset");
}

std::optional<IconFamilyHandle> familyInFile(const std::string &path) {
    IconFamilyHandle family;
    const bool isRead = ReadIconFromFSRef(referenceToTarget(path), &family) == noErr;
    return isRead ? std::optional(family) : std::nullopt;
}

IconSource familyAt(const std::string &path) {
    const FSRef item = referenceToTarget(path);
    IconSource source = {{}, IconSource::Origin::File};
    const OSStatus reading = ReadIconFromFSRef(item, &source.family);
    if (reading == noErr)
        return source;
    source.origin = IconSource::Origin::CustomIcon;
    const OSStatus customIcon = customIconOf(item, &source.family);
    if (customIcon != noErr)
        throwMissing(path, reading, customIcon);
    return source;
}

IconSource shownFamilyAt(const std::string &path) {
    if (hasExtension(path, ".icns"))
        return familyAt(path);
    const FSRef item = referenceToTarget(path);
    IconSource source = {{}, IconSource::Origin::File};
    if (ReadIconFromFSRef(item, &source.family) == noErr)
        return source;
    source.origin = IconSource::Origin::CustomIcon;
    if (customIconOf(item, &source.family) == noErr)
        return source;
    source.origin = IconSource::Origin::Desktop;
    useOffscreenGraphics();
    IconRef icon;
    OSStatus status = GetIconRefFromFileInfo(item, &icon);
    if (status == noErr)
        status = IconRefToIconFamily(icon, kSelectorAllAvailableData, &source.family);
    if (status != noErr)
        throw Failure(path, status);
    return source;
}

QImage shownIcon(const MXFileSystemObject &item, const std::string &path, int pixels) {
    constexpr bool kUsesCached = false;
    useOffscreenGraphics();
    QImage image = item.iconForFSOUsingCached(kUsesCached)->image(pixels);
    if (image.isNull())
        throw Failure(path, "its icon cannot be drawn; is Qt's SVG plug-in installed?");
    return image;
}

QImage shownIconAt(const std::string &path, int pixels) {
    const MXFileSystemObject::Ptr item = itemAtPath(path);
    if (familyInFile(path))
        return ownImage(path, pixels);
    if (hasExtension(path, ".icns") && item->isFile())
        throw Failure(path, "not an icon family");
    return shownIcon(*item, path, pixels);
}

} // namespace MWCore::mwfile
