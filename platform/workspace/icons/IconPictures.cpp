// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/icons/IconPictures.h"

#include "platform/formats/icns/IconImages.h"
#include "platform/pictures/ImageScaling.h"
#include "platform/workspace/icons/DrawnIcons.h"
#include "platform/workspace/icons/IconDescriptions.h"
#include "platform/workspace/icons/IconFiles.h"
#include "platform/workspace/icons/SharedThumbnails.h"
#include "platform/workspace/ResponsiveFiles.h"

#include <MWCore/IconElements.h>

#include <algorithm>
#include <tuple>
#include <utility>
#include <vector>

namespace MWCore {
namespace {

constexpr int64_t kLongestThemeIcon = 16'777'216; // bytes; real ones have some 100,000
constexpr QByteArrayView kFamilyHeader = "icns";

std::optional<Picture> pictureIn(const std::optional<QByteArray> &bytes) {
    OSStatus status = noErr;
    return bytes ? Picture::fromBytes(*bytes, &status) : std::nullopt;
}

IconFamilyHandle customIconFamily(const QByteArray &path) {
    FSRef ref;
    IconFamilyHandle family;
    const bool isFound = FSPathMakeRef(path, &ref) == noErr && customIconOf(ref, &family) == noErr;
    return isFound ? family : IconFamilyHandle();
}

/// The best element for @p pixels first: large enough, then near in size, then rich in colours.
std::vector<const IconContainer::Element *> byFitness(const IconContainer &family, int pixels) {
    const auto order = [pixels](const IconContainer::Element *element) {
        const IconElementType &type = *iconElementType(element->type);
        const int width = type.size.width();
        return std::tuple(width < pixels, std::abs(width - pixels),
                          type.encoding >= IconEncoding::Bitmap &&
                              type.encoding <= IconEncoding::Indexed8);
    };
    std::vector<const IconContainer::Element *> elements;
    for (const IconContainer::Element &element : family.elements()) {
        const IconElementType *const type = iconElementType(element.type);
        if (type && !type->size.isEmpty() && type->encoding != IconEncoding::Mask)
            elements.push_back(&element);
    }
    std::ranges::stable_sort(elements, {}, order);
    return elements;
}

} // namespace

IconPictures::IconPictures(IconRef icon, std::shared_ptr<const IconTheme> theme,
                           Thumbnails thumbnails)
    : icon_(std::move(icon)), theme_(std::move(theme)), thumbnails_(thumbnails) {}

void IconPictures::readOwn() {
    if (std::exchange(isOwnRead_, true))
        return;
    if (!icon_.customIconOf.isEmpty())
        family_ = customIconFamily(icon_.customIconOf);
    auto bytes = !family_.isEmpty() || icon_.file.isEmpty()
                     ? std::nullopt
                     : readIconFile(icon_.file, kLongestIconFile);
    if (bytes && bytes->startsWith(kFamilyHeader))
        family_ = *std::move(bytes);
    else
        own_ = pictureIn(bytes);
}

const IconFamilyHandle &IconPictures::family() {
    readOwn();
    return family_;
}

QImage IconPictures::familyImage(int pixels) {
    if (family().isEmpty())
        return {};
    const IconContainer container(family());
    for (const IconContainer::Element *const element : byFitness(container, pixels))
        if (const QImage image = elementImage(container, *element); !image.isNull())
            return image.size() == QSize(pixels, pixels) ? image : fittedImage(image, pixels);
    return {};
}

QImage IconPictures::image(int points, int scale, int pixels) {
    QImage image = familyImage(pixels);
    if (image.isNull() && own_)
        image = own_->squareImage(pixels);
    if (image.isNull() && thumbnails_ == Thumbnails::Use && !icon_.thumbnailOf.isEmpty())
        image = sharedThumbnail(icon_.thumbnailOf, pixels, scale);
    if (image.isNull())
        if (const Picture *const picture = find(points, scale))
            image = picture->squareImage(pixels);
    return image;
}

std::optional<QByteArray> IconPictures::themeFile(int points, int scale) const {
    return theme_ ? theme_->find(icon_.themeNames, points, scale) : std::nullopt;
}

QByteArray IconPictures::shareable(int points, int scale) const {
    if (!isOfKind(icon_))
        return {};
    return themeFile(points, scale).value_or(drawingFor(icon_, points).toLatin1());
}

bool IconPictures::hasDrawn(const QByteArray &shareable) const {
    const auto known = pictures_.find(shareable);
    return known != pictures_.end() && known->second;
}

const Picture *IconPictures::find(int points, int scale) {
    const auto path = themeFile(points, scale);
    const Picture *const found = path ? inTheme(*path) : nullptr;
    return found ? found : drawing(points);
}

/// A scalable file serves several sizes.
const Picture *IconPictures::inTheme(const QByteArray &path) {
    auto known = pictures_.find(path);
    if (known == pictures_.end())
        known = pictures_.emplace(path, pictureIn(ResponsiveFiles().read(path, kLongestThemeIcon)))
                    .first;
    return known->second ? &*known->second : nullptr;
}

const Picture *IconPictures::drawing(int points) {
    const QString name = drawingFor(icon_, points);
    auto known = pictures_.find(name.toLatin1());
    if (known == pictures_.end())
        known = pictures_.emplace(name.toLatin1(), pictureIn(drawingData(name))).first;
    return known->second ? &*known->second : nullptr;
}

} // namespace MWCore
