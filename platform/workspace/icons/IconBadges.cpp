// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/icons/IconBadges.h"

#include "platform/foundation/FrameworkResources.h"
#include "platform/pictures/ImageScaling.h"

#include <algorithm>
#include <utility>
#include <vector>

#include <QBuffer>
#include <QImageReader>
#include <QPainter>

namespace MWCore {
namespace {

/// The badge in several sizes, the smallest one first.
std::vector<QImage> readBadge(const char *name) {
    auto bytes = FrameworkResources::data(QString::fromLatin1(name), "tiff");
    if (!bytes)
        return {};
    QBuffer buffer(&*bytes);
    QImageReader reader(&buffer, "tiff");
    std::vector<QImage> images;
    do {
        if (QImage image = reader.read(); !image.isNull())
            images.push_back(std::move(image));
    } while (reader.jumpToNextImage());
    std::ranges::sort(images, {}, &QImage::width);
    return images;
}

const std::vector<QImage> &badgeImages(IconBadge badge) {
    static const auto *const alias = new std::vector(readBadge("AliasBadge"));
    static const auto *const locked = new std::vector(readBadge("LockedBadge"));
    return badge == IconBadge::Alias ? *alias : *locked;
}

/// Null if there is none.
QImage badgeImage(IconBadge badge, int width) {
    const std::vector<QImage> &images = badgeImages(badge);
    const auto large = std::ranges::lower_bound(images, width, {}, &QImage::width);
    if (images.empty())
        return {};
    return fittedImage(large == images.end() ? images.back() : *large, width);
}

} // namespace

void drawBadge(QImage &image, IconBadge badge) {
    if (badge == IconBadge::None)
        return;
    const QImage drawn = badgeImage(badge, image.width());
    QPainter painter(&image);
    painter.drawImage(QRect(0, 0, image.width(), image.height()), drawn);
}

} // namespace MWCore
