// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/posix/Descriptor.h"

#include <fcntl.h>

namespace MWCore {

/// A path of any length in the form that the system's `...at` calls take: the kernel refuses texts
/// of PATH_MAX bytes and more, so a longer one is approached folder by folder.
class ReachablePath {
public:
    /// @p path, which is relative to the open folder @p start unless it begins with "/", must
    /// outlive this object, as must the descriptor.
    explicit ReachablePath(const char *path, int start = AT_FDCWD)
        : ReachablePath(path, start, openat) {}

    /// The same, each folder on the way opened by @p open.
    ReachablePath(const char *path, int start, int (*open)(int, const char *, int, ...));

    /// False, with the cause in `errno`, when a folder on the way cannot be entered.
    explicit operator bool() const { return rest_ != nullptr; }

    /// The descriptor that rest() is relative to.
    [[nodiscard]] int folder() const;
    [[nodiscard]] const char *rest() const { return rest_; }

private:
    int start_;
    Descriptor folder_; ///< the last one on the way
    const char *rest_;
};

} // namespace MWCore
