// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "IconPictures.h"

#include "Failure.h"
#include "IconOutput.h"
#include "IconSource.h"
#include "ItemPath.h"
#include "OffscreenGraphics.h"
#include "ShownMetadata.h"

#include <algorithm>
#include <new>
#include <utility>

namespace MWCore::mwfile {
namespace {

/// The pictures of an iconset, the largest first.
constexpr std::array kIconsetNames = {
    "icon_512x512@2x.png", "icon_512x512.png", "icon_256x256@2x.png", "icon_256x256.png",
    "icon_128x128@2x.png", "icon_128x128.png", "icon_32x32@2x.png",   "icon_32x32.png",
    "icon_16x16@2x.png",   "icon_16x16.png",
};

/// The elements of a classic family that are stored as PNG.
constexpr std::array kPngTypes = {fourCharCode("ic09"), fourCharCode("ic08")};

std::optional<Picture> readPicture(const std::string &path, OSStatus *status) {
    auto picture = Picture::read(QByteArray::fromStdString(path), status);
    if (picture && picture->isVector())
        useOffscreenGraphics();
    return picture;
}

Picture pictureAt(const std::string &path) {
    (void)referenceTo(resolvedPath(path));
    OSStatus status = noErr;
    auto picture = readPicture(path, &status);
    if (status == mapReadErr)
        throw Failure(path, "damaged, or not a picture in a known format");
    if (status == errFSOperationNotSupported)
        throw Failure(path, "neither a picture nor a folder that ends with .iconset");
    if (!picture)
        throw Failure(path, status);
    return *std::move(picture);
}

Picture largestInIconset(const std::string &path) {
    OSStatus status = fnfErr;
    for (const char *const name : kIconsetNames)
        if (auto picture = readPicture(path + "/" + name, &status))
            return *std::move(picture);
    throw Failure(path, status);
}

void compressPng(IconFamilyHandle &family, uint32_t type, int effort) {
    OSStatus status = noErr;
    const auto pixels = GetIconFamilyData(family, type, &status);
    if (!pixels || SetIconFamilyData(family, type, *pixels, effort) != noErr)
        throw std::bad_alloc();
}

/// Only a lack of memory makes the library return null.
IconFamily::Ptr nonNull(IconFamily::Ptr family) {
    if (!family)
        throw std::bad_alloc();
    return family;
}

} // namespace

void IconPictures::add(const std::string &path, Appearance appearance) {
    if (isIconset(path))
        return addIconset(path, appearance);
    const Picture picture = pictureAt(path);
    builder_.addPicture(picture, 0, appearance);
    offer(path, picture, appearance);
}

void IconPictures::addIconset(const std::string &path, Appearance appearance) {
    (void)referenceTo(resolvedPath(path));
    const OSStatus status = builder_.addIconset(pathText(path), appearance);
    if (status == fnfErr)
        throw Failure(path, "has no picture with a name like icon_32x32@2x.png");
    if (status == mapReadErr)
        throw Failure(path, "one of its pictures is damaged");
    if (status == paramErr)
        throw Failure(path, "one of its pictures does not have the size in its name");
    if (status != noErr)
        throw Failure(path, status);
    offer(path, largestInIconset(path), appearance);
}

void IconPictures::offer(const std::string &path, const Picture &picture, Appearance appearance) {
    const int width = std::max(picture.size().width(), picture.size().height());
    const auto rank = [](const Picture &one, int side) { return std::pair(one.isVector(), side); };
    std::optional<Best> &known = best_[static_cast<std::size_t>(appearance)];
    if (!known || rank(picture, width) > rank(known->picture, known->width))
        known = Best{path, picture, width};
}

void IconPictures::setPngEffort(int effort) {
    pngEffort_ = effort;
    builder_.setPngEffort(effort);
}

IconFamily::Ptr IconPictures::classicFamily() const {
    constexpr int kLargestWidth = 512;
    const Best &source = best(Appearance::Light).value();
    const QImage image = source.picture.squareImage(kLargestWidth);
    if (image.isNull())
        throw Failure(source.path, "cannot be drawn");
    IconFamily::Ptr family = nonNull(IconFamily::initWithThumbnailsOfImage(image));
    if (!pngEffort_)
        return family;
    IconFamilyHandle bytes = family->data();
    for (const uint32_t type : kPngTypes)
        compressPng(bytes, type, *pngEffort_);
    return nonNull(IconFamily::initWithIconFamilyHandle(bytes));
}

IconFamily::Ptr IconPictures::modernFamily() const {
    return nonNull(builder_.build());
}

} // namespace MWCore::mwfile
