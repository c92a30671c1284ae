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
    IconFamilyHandle family;
    return customIconAt(path, &family) == noErr ? family : IconFamilyHandle();
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
        image = themeImage(points, scale, pixels);
    return image.isNull() ? drawing(points, pixels) : image;
}

std::optional<QByteArray> IconPictures::themeFile(const QStringList &names, int points,
                                                  int scale) const {
    return theme_ ? theme_->find(names, points, scale) : std::nullopt;
}

std::optional<QByteArray> IconPictures::bestThemeFile(int points, int scale) const {
    const QStringList &names = icon_.themeNames;
    const qsizetype own = std::min(icon_.ownNames, names.size());
    for (qsizetype at = 0; at < own; ++at)
        if (auto file = themeFile({names[at]}, points, scale))
            return file;
    return themeFile(names.sliced(own), points, scale);
}

QByteArray IconPictures::shareable(int points, int scale) const {
    if (!isOfKind(icon_))
        return {};
    return bestThemeFile(points, scale).value_or(drawingFor(icon_, points).toLatin1());
}

/// If the theme's file is damaged, the icon of the first name whose file is not.
QImage IconPictures::themeImage(int points, int scale, int pixels) {
    const auto best = bestThemeFile(points, scale);
    QImage image = best ? fileImage(*best, pixels) : QImage();
    for (auto name = icon_.themeNames.cbegin();
         best && image.isNull() && name != icon_.themeNames.cend(); ++name)
        if (const auto other = themeFile({*name}, points, scale))
            image = fileImage(*other, pixels);
    return image;
}

/// A scalable file serves several sizes.
QImage IconPictures::fileImage(const QByteArray &path, int pixels) {
    if (!pictures_.contains(path))
        pictures_.emplace(path, pictureIn(ResponsiveFiles().read(path, kLongestThemeIcon)));
    return rendered(path, pixels);
}

QImage IconPictures::drawing(int points, int pixels) {
    const QString name = drawingFor(icon_, points);
    const QByteArray key = name.toLatin1();
    if (!pictures_.contains(key))
        pictures_.emplace(key, pictureIn(drawingData(name)));
    return rendered(key, pixels);
}

QImage IconPictures::rendered(const QByteArray &name, int pixels) {
    const std::optional<Picture> &picture = pictures_[name];
    QImage image = picture ? picture->squareImage(pixels) : QImage();
    if (!image.isNull())
        drawn_ = name;
    return image;
}

} // namespace MWCore
