// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/icons/IconImageCache.h"

#include <QHashFunctions>

namespace MWCore {

bool IconImageKey::operator==(const IconImageKey &other) const {
    return hash == other.hash && badge == other.badge && points == other.points &&
           pixels == other.pixels && theme == other.theme &&
           (icon == other.icon || *icon == *other.icon);
}

std::size_t IconImageCache::Hash::operator()(const IconImageKey &key) const {
    return qHashMulti(key.hash, static_cast<int>(key.badge), key.points, key.pixels);
}

IconImageCache &IconImageCache::shared() {
    static auto *const cache = new IconImageCache; // never freed: threads may outlive main()
    return *cache;
}

QImage IconImageCache::find(const IconImageKey &key) {
    const std::scoped_lock lock(mutex_);
    const auto found = index_.find(key);
    if (found == index_.end())
        return {};
    entries_.splice(entries_.begin(), entries_, found->second);
    return found->second->image;
}

void IconImageCache::insert(const IconImageKey &key, const QImage &image) {
    const std::scoped_lock lock(mutex_);
    if (image.sizeInBytes() > limit_ || index_.contains(key))
        return;
    entries_.push_front({key, image});
    index_.emplace(key, entries_.begin());
    bytes_ += image.sizeInBytes();
    dropOldest();
}

void IconImageCache::setLimit(int64_t bytes) {
    const std::scoped_lock lock(mutex_);
    limit_ = bytes;
    dropOldest();
}

void IconImageCache::dropOldest() {
    while (bytes_ > limit_ && !entries_.empty()) {
        bytes_ -= entries_.back().image.sizeInBytes();
        index_.erase(entries_.back().key);
        entries_.pop_back();
    }
}

} // namespace MWCore
