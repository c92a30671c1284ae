// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/workspace/icons/ThemeTag.h"

#include <mutex>
#include <unordered_map>

#include <QByteArray>
#include <QImage>

namespace MWCore {

/// A picture in a size. A theme has the same picture for many types of files.
struct PictureKey {
    QByteArray picture; ///< IconPictures::shareable()
    int pixels;
    qreal scale;
    ThemeTag theme;

    bool operator==(const PictureKey &) const = default;
};

/// The images of such pictures, without badges, as long as a copy of the image is in use elsewhere.
/// Any thread.
class ImagesInUse {
public:
    static ImagesInUse &shared();

    /// The image of @p key; null if there is none.
    [[nodiscard]] QImage find(const PictureKey &key);

    /// Shares @p image unless it is null, and drops those that nobody uses any more.
    void insert(const PictureKey &key, const QImage &image);

private:
    struct Hash {
        std::size_t operator()(const PictureKey &key) const;
    };

    std::mutex mutex_;
    std::unordered_map<PictureKey, QImage, Hash> images_;
};

} // namespace MWCore
