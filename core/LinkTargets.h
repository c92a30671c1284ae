// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/posix/allocation.h"

namespace MWCore {

/// The absolute path without links of what @p path leads to, as realpath(3) gives it, also for a
/// path that is too long for it. Null, with the cause in `errno`, when there is none.
[[nodiscard]] Text resolvedPath(const char *path);

/// Resolves the links of one folder.
class LinkTargets {
public:
    /// @p folder is the open folder at @p path; both must outlive this object.
    LinkTargets(int folder, const char *path) : folder_(folder), path_(path) {}

    /// resolvedPath() of the link @p name in the folder.
    [[nodiscard]] Text resolve(const char *name);

private:
    [[nodiscard]] Text neighbour(const char *name);

    int folder_;
    const char *path_;
    Text realFolder_; ///< `path_` resolved, once it was needed
};

} // namespace MWCore
