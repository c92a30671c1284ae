// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/posix/Descriptor.h"

#include <fcntl.h>

namespace MWCore {

/// A path of any length in the form that the system's `...at` calls take: an open folder and a
/// short path relative to it. The kernel refuses paths of PATH_MAX bytes and more, so the folders
/// on a longer path are opened one after the other.
class LongPath {
public:
    /// @p path is relative to the open folder @p start unless it begins with "/". Both must outlive
    /// this object.
    explicit LongPath(const char *path, int start = AT_FDCWD) : LongPath(path, start, openat) {}

    /// The same, but opens the folders on the path with @p open.
    LongPath(const char *path, int start, int (*open)(int, const char *, int, ...));

    /// False, with the cause in `errno`, if the path is null or a folder on it cannot be opened.
    explicit operator bool() const { return rest_ != nullptr; }

    /// The descriptor that relativePath() is relative to.
    [[nodiscard]] int folder() const;
    [[nodiscard]] const char *relativePath() const { return rest_; }

private:
    int start_;
    Descriptor folder_; ///< the last folder opened, if any
    const char *rest_;
};

} // namespace MWCore
