// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/workspace/ResponsiveFiles.h"

#include <cstdint>
#include <vector>

#include <QByteArray>

namespace MWCore {

/// What files and folders looked like before they were read, to notice that they have changed. Fill
/// it from one thread; then any thread may read it.
class ItemStamps {
public:
    static constexpr std::size_t kMost = 8192; ///< further ones are not noticed

    /// Records the item at @p path, which need not exist. To be called before it is read.
    void add(const QByteArray &path, ResponsiveFiles &files);

    /// Whether an item was changed, replaced, created or removed. Touches no file system that may
    /// not answer; an item that has come to lie on one counts as removed.
    [[nodiscard]] bool haveChanged() const;

private:
    /// Of an item that is not there, all are 0.
    struct Stamp {
        uint64_t device = 0;
        uint64_t inode = 0;
        int64_t size = 0;
        int64_t modified = 0; ///< nanoseconds since 1970
        int64_t changed = 0;  ///< the same, of its metadata

        [[nodiscard]] bool operator==(const Stamp &) const = default;
    };
    struct Item {
        QByteArray path;
        Stamp stamp;
        bool isFresh; ///< modified so recently that the next change may have the same time
    };

    [[nodiscard]] static Stamp stampOf(const QByteArray &path, ResponsiveFiles &files);

    std::vector<Item> items_;
};

} // namespace MWCore
