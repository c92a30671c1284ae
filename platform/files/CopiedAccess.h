// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <sys/types.h>

namespace MWCore {

/// Who may read and write a file that takes the place of another, or stands beside another.
struct Access {
    mode_t mode; ///< the nine permission bits
    // -1: as a new file has them.
    uid_t owner;
    gid_t group;
};

/// Gives the open file @p descriptor owner and group of @p wanted as far as the process may give
/// files away, and the access control list and other extended attributes of the open file @p from
/// (-1 for none). 0 or an `errno` value: EPERM where owner or group cannot be kept and somebody
/// who may read or write by @p wanted could not any more. The mode is left to the caller.
[[nodiscard]] int copyAccess(int descriptor, const Access &wanted, int from);

} // namespace MWCore
