// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/icons/ItemIcon.h"

#include "platform/workspace/icons/IconBadges.h"
#include "platform/workspace/icons/IconDescriptions.h"
#include "platform/workspace/icons/IconImageCache.h"
#include "platform/workspace/icons/IconNames.h"
#include "platform/workspace/icons/IconPictures.h"
#include "platform/workspace/icons/ImagesInUse.h"
#include "platform/workspace/icons/ItemIcons.h"

#include <cmath>
#include <utility>

namespace MWCore {
namespace {

IconRef unknownIcon() {
    return themeIcon("unknown", kFileDrawing);
}

/// 0 if there is no image of this size, or @p scale is not a number.
int pixelsOf(int points, qreal scale) {
    const qreal pixels = points * scale;
    return points > 0 && pixels >= 1 && pixels <= ItemIcon::kMostPixels ? qRound(pixels) : 0;
}

/// The image without its badge. Types for which the theme has the same picture share it.
QImage unbadged(const IconImageKey &key, const std::shared_ptr<const IconTheme> &theme) {
    constexpr auto kFormat = QImage::Format_ARGB32_Premultiplied;
    IconPictures pictures(*key.icon, theme, IconPictures::Thumbnails::Use);
    const int density = static_cast<int>(std::ceil(key.scale));
    const QByteArray picture = pictures.shareable(key.points, density);
    const PictureKey shared = {picture, key.pixels, key.scale, key.theme};
    QImage image = picture.isEmpty() ? QImage() : ImagesInUse::shared().find(shared);
    if (!image.isNull())
        return image;
    image = pictures.image(key.points, density, key.pixels).convertToFormat(kFormat);
    image.setDevicePixelRatio(key.scale);
    if (pictures.hasDrawn(picture))
        ImagesInUse::shared().insert(shared, image);
    return image;
}

QImage drawn(const IconImageKey &key, const std::shared_ptr<const IconTheme> &theme) {
    QImage image = unbadged(key, theme);
    if (image.isNull() || key.badge == IconBadge::None)
        return image;
    image.setDevicePixelRatio(1); // the badge has as many pixels
    drawBadge(image, key.badge);
    image.setDevicePixelRatio(key.scale);
    return image;
}

} // namespace

ItemIcon::ItemIcon(IconRef icon, IconBadge badge)
    : hash_(hashOf(icon)), icon_(sharedDescription(std::move(icon), hash_)), badge_(badge) {}

ItemIcon::Ptr ItemIcon::init(IconRef icon, IconBadge badge) {
    return Ptr(new ItemIcon(std::move(icon), badge));
}

IconImageKey ItemIcon::key(int points, qreal scale,
                           const std::shared_ptr<const IconTheme> &theme) const {
    const int pixels = pixelsOf(points, scale);
    return {icon_, hash_, badge_, points, pixels, pixels > 0 ? scale : 0, ThemeTag(theme)};
}

QImage ItemIcon::cachedImage(int points, qreal scale) const {
    return IconImageCache::shared().find(key(points, scale, IconTheme::current()));
}

QImage ItemIcon::image(int points, qreal scale) const {
    const auto theme = IconTheme::current();
    const IconImageKey wanted = key(points, scale, theme);
    return wanted.pixels > 0
               ? IconImageCache::shared().findOrDraw(wanted, [&] { return drawn(wanted, theme); })
               : QImage();
}

HeldIconImage ItemIcon::heldImage(int points, qreal scale,
                                  const std::shared_ptr<const IconTheme> &theme) const {
    const IconImageKey wanted = key(points, scale, theme);
    return wanted.pixels > 0
               ? IconImageCache::shared().hold(wanted, [&] { return drawn(wanted, theme); })
               : nullptr;
}

HeldIconImage ItemIcon::heldCachedImage(int points, qreal scale,
                                        const std::shared_ptr<const IconTheme> &theme) const {
    return IconImageCache::shared().hold(key(points, scale, theme));
}

void ItemIcon::setCacheLimit(int64_t bytes) {
    IconImageCache::shared().setLimit(bytes);
}

int64_t ItemIcon::cacheLimit() {
    return IconImageCache::shared().limit();
}

ItemIcon::Ptr iconForFile(const QByteArray &path, IconBadge badge, uint64_t unflaggedState) {
    FoundIcon found = findItemIcon(path, ItemRole::Shown, unflaggedState);
    return ItemIcon::init(found.status == noErr ? std::move(found.icon) : unknownIcon(), badge);
}

ItemIcon::Ptr iconForPlainFile(const QByteArray &path, OSStatus *status, uint64_t unflaggedState) {
    FoundIcon found = findItemIcon(path, ItemRole::Shown, unflaggedState);
    if (status)
        *status = found.status;
    return ItemIcon::init(found.status == noErr ? std::move(found.icon) : unknownIcon(),
                          found.isLocked ? IconBadge::Locked : IconBadge::None);
}

} // namespace MWCore
