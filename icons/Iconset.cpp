// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "icons/IconFamilyBuilder.h"

#include "platform/files/AtomicFile.h"
#include "platform/files/PathParts.h"
#include "platform/formats/icns/IconContainer.h"
#include "platform/foundation/FileSystemText.h"
#include "platform/pictures/Png.h"
#include "platform/pictures/PngEncoding.h"

#include <cerrno>
#include <vector>

#include <sys/stat.h>

namespace MWCore {
namespace {

/// A file of an iconset and the elements that hold its image, the best one first.
struct IconsetFile {
    const char *name;
    int pixels;
    int scale; ///< pixels per point
    uint32_t elements[3];
};

// clang-format off
constexpr IconsetFile kFiles[] = {
    {"icon_16x16.png",        16, 1, {fourCharCode("ic04"), fourCharCode("icp4"), fourCharCode("is32")}},
    {"icon_16x16@2x.png",     32, 2, {fourCharCode("ic11")}},
    {"icon_32x32.png",        32, 1, {fourCharCode("ic05"), fourCharCode("icp5"), fourCharCode("il32")}},
    {"icon_32x32@2x.png",     64, 2, {fourCharCode("ic12"), fourCharCode("icp6")}},
    {"icon_128x128.png",     128, 1, {fourCharCode("ic07"), fourCharCode("it32")}},
    {"icon_128x128@2x.png",  256, 2, {fourCharCode("ic13")}},
    {"icon_256x256.png",     256, 1, {fourCharCode("ic08")}},
    {"icon_256x256@2x.png",  512, 2, {fourCharCode("ic14")}},
    {"icon_512x512.png",     512, 1, {fourCharCode("ic09")}},
    {"icon_512x512@2x.png", 1024, 2, {fourCharCode("ic10")}},
};
// clang-format on

/// The PNG of a file of the iconset, as it is stored if it is one; empty if no element has it.
QByteArray pngFor(const IconsetFile &file, const IconFamily &family,
                  const IconContainer &container) {
    for (const uint32_t type : file.elements) {
        const IconContainer::Element *const element = container.find(type);
        if (!element)
            continue;
        const QByteArrayView payload = container.payload(*element);
        const QImage image = family.imageOfElement(type);
        if (!image.isNull())
            return isPng(payload) ? payload.toByteArray() : encodePng(image);
    }
    return {};
}

OSStatus writeFile(const QByteArray &path, const QByteArray &content) {
    OSStatus status = noErr;
    const auto place = ItemLocator::find(path, &status);
    auto file = place ? AtomicFile::begin(*place, &status) : std::nullopt;
    return file ? file->replace(content, accessOfNewFile()) : status;
}

OSStatus makeFolder(const QByteArray &path) {
    OSStatus status = noErr;
    const auto place = ItemLocator::find(path, &status);
    if (!place)
        return status;
    constexpr mode_t kNewFolderMode = 0777; // less the process's umask
    const bool isThere =
        mkdirat(place->folder(), place->name().constData(), kNewFolderMode) == 0 || errno == EEXIST;
    return isThere ? noErr : statusFromErrno(errno);
}

} // namespace

OSStatus IconFamilyBuilder::addIconset(const QString &path, Appearance appearance) {
    const auto folder = fileSystemRepresentation(path);
    if (!folder)
        return bdNamErr;
    std::vector<Source> found; // nothing is added if one cannot be read
    for (const IconsetFile &file : kFiles) {
        OSStatus status = noErr;
        const auto picture = Picture::read(pathIn(*folder, file.name), &status);
        if (status == fnfErr)
            continue;
        if (!picture)
            return status;
        if (picture->size() != QSize(file.pixels, file.pixels))
            return paramErr;
        found.push_back({*picture, file.scale});
    }
    for (const Source &source : found)
        addPicture(source.picture, source.scale, appearance);
    return found.empty() ? fnfErr : noErr;
}

OSStatus writeIconset(const IconFamily &family, const QString &path) {
    const auto folder = fileSystemRepresentation(path);
    if (!folder)
        return bdNamErr;
    const IconContainer container(family.data());
    OSStatus status = resNotFound;
    for (const IconsetFile &file : kFiles) {
        const QByteArray png = pngFor(file, family, container);
        if (png.isEmpty())
            continue;
        status = makeFolder(*folder);
        if (status == noErr)
            status = writeFile(pathIn(*folder, file.name), png);
        if (status != noErr)
            return status;
    }
    return status;
}

} // namespace MWCore
