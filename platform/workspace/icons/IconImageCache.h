// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/workspace/icons/ItemIcon.h"
#include "platform/workspace/icons/ThemeTag.h"

#include <condition_variable>
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
    int pixels;  ///< 0 if there is no image of this size
    qreal scale; ///< pixels per point; several give the same number of pixels
    ThemeTag theme;

    [[nodiscard]] bool operator==(const IconImageKey &other) const;
};

/// The images of icons: those that somebody holds, and those that were used last, up to a number of
/// bytes. Those of a theme that is no longer in use go first. Any thread.
class IconImageCache {
public:
    using Draw = std::function<QImage()>;

    static IconImageCache &shared();

    /// The image of @p key; null if it is not here.
    [[nodiscard]] QImage find(const IconImageKey &key);

    /// The same, drawn by @p draw if it is not here. One thread draws an image; others that want it
    /// meanwhile wait for that thread.
    [[nodiscard]] QImage findOrDraw(const IconImageKey &key, const Draw &draw);

    /// The image that find() or, with @p draw, findOrDraw() returns. It is found, whatever the
    /// limit, until the last copy of the pointer has gone. Null if there is no image.
    [[nodiscard]] HeldIconImage hold(const IconImageKey &key, const Draw &draw = {});

    void setLimit(int64_t bytes);
    [[nodiscard]] int64_t limit();

private:
    struct Hash {
        std::size_t operator()(const IconImageKey &key) const;
    };
    struct Entry {
        IconImageKey key;
        QImage image;
    };
    struct Held {
        QImage image;
        int holders = 0;
    };
    struct Drawing {
        QImage image;
        bool isDone = false;
    };
    class Turn;
    template <typename Value> using Map = std::unordered_map<IconImageKey, Value, Hash>;

    // With the mutex locked:
    QImage findHere(const IconImageKey &key);
    void insert(const IconImageKey &key, const QImage &image);
    void insertFirst(const IconImageKey &key, const QImage &image);
    void drop(std::list<Entry>::iterator entry);
    void dropOldest();

    void claim(const IconImageKey &key);
    void release(const IconImageKey &key);

    std::mutex mutex_;
    std::condition_variable isDrawn_;
    std::list<Entry> entries_; ///< the one used last first
    Map<std::list<Entry>::iterator> index_;
    Map<Held> held_;
    Map<std::shared_ptr<Drawing>> drawings_; ///< those that a thread is drawing
    int64_t bytes_ = 0;                      ///< of the entries
    int64_t limit_ = 6'291'456;
};

} // namespace MWCore
