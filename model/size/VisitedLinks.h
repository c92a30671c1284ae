// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <mutex>
#include <utility>

#include <QHash>

#include <sys/stat.h>

namespace MWCore {

/// The files with several names that were already measured. Any thread.
class VisitedLinks {
public:
    /// Whether this is the first visit of @p file, which is recorded until its last name is
    /// visited.
    [[nodiscard]] bool isFirstVisit(const struct stat &file) {
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
