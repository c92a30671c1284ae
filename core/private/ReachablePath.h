// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/private/Descriptor.h"

namespace MWCore {

/// A path of any length in the form that the system's `...at` calls take: the kernel refuses texts
/// of PATH_MAX bytes and more, so a longer one is approached folder by folder.
class ReachablePath {
public:
    /// @p path must outlive this object.
    explicit ReachablePath(const char *path);

    /// False, with the cause in `errno`, when a folder on the way cannot be entered.
    explicit operator bool() const { return rest_ != nullptr; }

    /// The descriptor that rest() is relative to.
    [[nodiscard]] int folder() const;
    [[nodiscard]] const char *rest() const { return rest_; }

private:
    Descriptor folder_;
    const char *rest_;
};

} // namespace MWCore
