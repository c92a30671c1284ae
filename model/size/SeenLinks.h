// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <mutex>
#include <utility>

#include <QHash>

#include <sys/stat.h>

namespace MWCore {

/// Which files with several names were met. Any thread.
class SeenLinks {
public:
    /// Whether the file is met for the first time. Forgets it with the last of its names.
    [[nodiscard]] bool isFirst(const struct stat &file) {
        if (file.st_nlink < 2)
            return true;
        const std::lock_guard lock(mutex_);
        const Key key(file.st_dev, file.st_ino);
        const auto found = namesLeft_.find(key);
        if (found == namesLeft_.end()) {
            namesLeft_.insert(key, file.st_nlink - 1);
            return true;
        }
        if (--*found == 0)
            namesLeft_.erase(found);
        return false;
    }

private:
    using Key = std::pair<dev_t, ino_t>;

    std::mutex mutex_;
    QHash<Key, nlink_t> namesLeft_;
};

} // namespace MWCore
