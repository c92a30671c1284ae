// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/IconServices.h>
#include <MWCore/mwcore_export.h>

#include <cstdint>
#include <memory>

#include <QByteArray>
#include <QExplicitlySharedDataPointer>
#include <QImage>
#include <QSharedData>

namespace MWCore {

struct IconImageKey;
class IconTheme;

/// An image that stays in the cache until the last copy of the pointer has gone.
using HeldIconImage = std::shared_ptr<const QImage>;

/// What is drawn over an icon.
enum class IconBadge : uint8_t {
    None,
    Alias, ///< "AliasBadge"
    Locked ///< "LockedBadge"
};

/// The icon of an item: a square of 128 x 128 points that is also drawn sharp in any other size.
/// Only a description is stored; an image is drawn when it is wanted, and shared by all icons that
/// look the same. Reference-counted, never changes; any thread.
class MWCORE_EXPORT ItemIcon : public QSharedData {
public:
    using Ptr = QExplicitlySharedDataPointer<ItemIcon>;
    static constexpr int kPoints = 128;
    static constexpr int kMostPixels = 4096; ///< of an image, a side

    [[nodiscard]] static Ptr init(IconRef icon, IconBadge badge = IconBadge::None);

    [[nodiscard]] const IconRef &description() const { return *icon_; }
    [[nodiscard]] IconBadge badge() const { return badge_; }

    /// The icon in a square of @p points at @p scale pixels per point, which is the image's device
    /// pixel ratio. QImage::Format_ARGB32_Premultiplied. A file that has gone or is damaged since
    /// is passed over. Null if the square has less than 1 or more than kMostPixels a side, if
    /// memory runs out, or if Qt's SVG plug-in is missing and the theme has no such icon.
    [[nodiscard]] QImage image(int points = kPoints, qreal scale = 1) const;

    /// The same if it is in the cache, else null. Draws nothing.
    [[nodiscard]] QImage cachedImage(int points = kPoints, qreal scale = 1) const;

    /// As image() and cachedImage(), with the pictures of @p theme; null means none but this
    /// library's own drawings, which touches no file system unless the description names a file.
    [[nodiscard]] HeldIconImage heldImage(int points, qreal scale,
                                          const std::shared_ptr<const IconTheme> &theme) const;
    [[nodiscard]] HeldIconImage
    heldCachedImage(int points, qreal scale, const std::shared_ptr<const IconTheme> &theme) const;

    /// The images drawn last are kept, up to this many bytes for the whole process, and all that
    /// are held. 6 MiB at first.
    static void setCacheLimit(int64_t bytes);
    [[nodiscard]] static int64_t cacheLimit();

private:
    ItemIcon(IconRef icon, IconBadge badge);

    [[nodiscard]] IconImageKey key(int points, qreal scale,
                                   const std::shared_ptr<const IconTheme> &theme) const;

    std::size_t hash_; ///< of what decides the look
    std::shared_ptr<const IconRef> icon_;
    IconBadge badge_;
};

/// The icon that the workspace shows for the item at @p path (file-system representation), by
/// GetIconRefFromFileInfo(). A link has the icon of its target. The generic file icon if nothing is
/// there. Never null.
///
/// This library passes the state of an inode (ItemStatus.h) that it has seen without Finder flags:
/// as long as the item has that state, they are not read again. 0 means that they are not known.
[[nodiscard]] MWCORE_EXPORT ItemIcon::Ptr
iconForFile(const QByteArray &path, IconBadge badge = IconBadge::None, uint64_t unflaggedState = 0);

/// The same for a plain file, with IconBadge::Locked if it is immutable. Sets @p status, which may
/// be null, to why the file could not be examined.
[[nodiscard]] MWCORE_EXPORT ItemIcon::Ptr
iconForPlainFile(const QByteArray &path, OSStatus *status = nullptr, uint64_t unflaggedState = 0);

} // namespace MWCore
