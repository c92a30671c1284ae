// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/themes/ItemStamps.h"

#include <algorithm>
#include <ctime>

#include <sys/stat.h>

namespace MWCore {
namespace {

constexpr int64_t kSecond = 1'000'000'000; // nanoseconds

int64_t nanoseconds(const timespec &time) {
    return time.tv_sec * kSecond + time.tv_nsec;
}

/// The time that the kernel would now give to an item that is modified.
int64_t timeForItems() {
    timespec now = {};
    clock_gettime(CLOCK_REALTIME_COARSE, &now);
    return nanoseconds(now);
}

} // namespace

ItemStamps::Stamp ItemStamps::stampOf(const QByteArray &path, ResponsiveFiles &files) {
    const Descriptor found = files.open(path);
    struct stat item = {};
    if (!found || fstat(found.number(), &item) != 0)
        return {};
    return {item.st_dev, item.st_ino, item.st_size, nanoseconds(item.st_mtim),
            nanoseconds(item.st_ctim)};
}

void ItemStamps::add(const QByteArray &path, ResponsiveFiles &files) {
    if (items_.size() >= kMost)
        return;
    const int64_t now = timeForItems();
    const Stamp stamp = stampOf(path, files);
    const bool isFresh = stamp.modified >= now && stamp.modified < now + kSecond;
    items_.push_back({path, stamp, isFresh});
}

bool ItemStamps::haveChanged() const {
    ResponsiveFiles files;
    return std::ranges::any_of(items_, [&files](const Item &item) {
        return item.isFresh || stampOf(item.path, files) != item.stamp;
    });
}

} // namespace MWCore
