// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/workspace/icons/ItemIcon.h"
#include "platform/workspace/themes/IconTheme.h"

#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <mutex>
#include <unordered_map>

#include <QImage>

namespace MWCore {

/// What decides how an image looks.
struct IconImageKey {
    std::shared_ptr<const IconRef> icon;
    std::size_t hash; ///< of the icon's value
    IconBadge badge;
    int points;
    int pixels;
    std::shared_ptr<const IconTheme> theme;

    [[nodiscard]] bool operator==(const IconImageKey &other) const;
};

/// The images of icons that were drawn last, up to a number of bytes. Any thread.
class IconImageCache {
public:
    static IconImageCache &shared();

    /// The image of @p key; null if it is not here.
    [[nodiscard]] QImage find(const IconImageKey &key);

    /// Keeps @p image, and drops those that were not used for longest if there are too many.
    void insert(const IconImageKey &key, const QImage &image);

    void setLimit(int64_t bytes);

private:
    struct Hash {
        std::size_t operator()(const IconImageKey &key) const;
    };
    struct Entry {
        IconImageKey key;
        QImage image;
    };

    void dropOldest();

    std::mutex mutex_;
    std::list<Entry> entries_; ///< the one used last first
    std::unordered_map<IconImageKey, std::list<Entry>::iterator, Hash> index_;
    int64_t bytes_ = 0;
    int64_t limit_ = 6'291'456;
};

} // namespace MWCore
