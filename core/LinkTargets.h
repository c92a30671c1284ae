// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/posix/allocation.h"

namespace MWCore {

/// The absolute path of the item at @p path with all links resolved, as realpath(3) returns it, but
/// without its limit on the length of @p path. Returns null and sets `errno` if there is none.
[[nodiscard]] Text resolvedPath(const char *path);

/// Resolves the links of one folder.
class LinkTargets {
public:
    /// @p folder is the open folder, @p path its path; both must outlive this object.
    LinkTargets(int folder, const char *path) : folder_(folder), path_(path) {}

    /// resolvedPath() of the link @p name in the folder.
    [[nodiscard]] Text resolve(const char *name);

private:
    [[nodiscard]] Text resolveToSibling(const char *name);

    int folder_;
    const char *path_;
    Text realFolder_; ///< `path_` resolved, null until it is needed
};

} // namespace MWCore
