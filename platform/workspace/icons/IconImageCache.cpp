// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/icons/IconImageCache.h"

#include <iterator>

#include <QHashFunctions>

namespace MWCore {

/// A thread's turn to draw an image. Its end wakes the threads that wait for the image.
class IconImageCache::Turn {
public:
    /// @p cache is locked.
    Turn(IconImageCache &cache, const IconImageKey &key)
        : cache_(cache), key_(key), drawing_(std::make_shared<Drawing>()) {
        cache_.drawings_.emplace(key, drawing_);
    }
    Turn(const Turn &) = delete;
    Turn &operator=(const Turn &) = delete;
    ~Turn() {
        const std::scoped_lock lock(cache_.mutex_);
        drawing_->isDone = true;
        cache_.drawings_.erase(key_);
        cache_.isDrawn_.notify_all();
    }

    void finish(const QImage &image) {
        const std::scoped_lock lock(cache_.mutex_);
        drawing_->image = image;
        cache_.insert(key_, image);
    }

private:
    IconImageCache &cache_;
    const IconImageKey &key_;
    std::shared_ptr<Drawing> drawing_;
};

bool IconImageKey::operator==(const IconImageKey &other) const {
    return hash == other.hash && badge == other.badge && points == other.points &&
           pixels == other.pixels && scale == other.scale && theme == other.theme &&
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
    return findHere(key);
}

QImage IconImageCache::findHere(const IconImageKey &key) {
    if (const auto held = held_.find(key); held != held_.end())
        return held->second.image; // null while it is being drawn
    const auto found = index_.find(key);
    if (found == index_.end())
        return {};
    entries_.splice(entries_.begin(), entries_, found->second);
    return found->second->image;
}

QImage IconImageCache::findOrDraw(const IconImageKey &key, const Draw &draw) {
    std::unique_lock lock(mutex_);
    QImage image = findHere(key);
    if (!image.isNull())
        return image;
    if (const auto found = drawings_.find(key); found != drawings_.end()) {
        const std::shared_ptr<Drawing> other = found->second;
        isDrawn_.wait(lock, [&other] { return other->isDone; });
        return other->image;
    }
    Turn turn(*this, key);
    lock.unlock();
    image = draw();
    turn.finish(image);
    return image;
}

HeldIconImage IconImageCache::hold(const IconImageKey &key, const Draw &draw) {
    auto image = std::make_unique<QImage>();
    claim(key); // so that it is found as soon as it is drawn
    const std::shared_ptr<QImage> held(image.release(), [this, key](const QImage *last) {
        release(key);
        delete last;
    });
    *held = draw ? findOrDraw(key, draw) : find(key);
    return held->isNull() ? nullptr : held;
}

void IconImageCache::claim(const IconImageKey &key) {
    const std::scoped_lock lock(mutex_);
    Held &held = held_[key];
    if (held.holders++ > 0)
        return;
    if (const auto found = index_.find(key); found != index_.end())
        held.image = found->second->image;
}

void IconImageCache::release(const IconImageKey &key) {
    const std::scoped_lock lock(mutex_);
    const auto held = held_.find(key);
    if (--held->second.holders > 0)
        return;
    insert(key, held->second.image); // it was in use until now
    held_.erase(held);
    if (const auto entry = index_.find(key); entry != index_.end() && key.theme.isObsolete())
        drop(entry->second);
}

void IconImageCache::insert(const IconImageKey &key, const QImage &image) {
    if (const auto held = held_.find(key); held != held_.end())
        held->second.image = image;
    if (const auto known = index_.find(key); known != index_.end())
        entries_.splice(entries_.begin(), entries_, known->second);
    else if (!image.isNull() && image.sizeInBytes() <= limit_)
        insertFirst(key, image);
}

void IconImageCache::insertFirst(const IconImageKey &key, const QImage &image) {
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

int64_t IconImageCache::limit() {
    const std::scoped_lock lock(mutex_);
    return limit_;
}

void IconImageCache::drop(std::list<Entry>::iterator entry) {
    bytes_ -= entry->image.sizeInBytes();
    index_.erase(entry->key);
    entries_.erase(entry);
}

void IconImageCache::dropOldest() {
    while (!entries_.empty() && (bytes_ > limit_ || entries_.back().key.theme.isObsolete()))
        drop(std::prev(entries_.end()));
}

} // namespace MWCore
