// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <optional>

#include <QByteArray>

#include <sys/types.h>

namespace MWCore {

/// Who may read and write a file that takes the place of another, or stands beside another.
struct Access {
    mode_t mode; ///< the nine permission bits
    // -1: as a new file has them.
    uid_t owner;
    gid_t group;

    /// The access control list as the attribute of that name has it, empty for none; absent where
    /// there are no such lists, and for what a new file has.
    std::optional<QByteArray> list = std::nullopt;
};

constexpr const char *kAccessList = "system.posix_acl_access";

/// Who may read and write the open file @p descriptor. Nothing on failure, with the cause in
/// `errno`.
[[nodiscard]] std::optional<Access> accessOf(int descriptor);

/// Lets the same people read and write the open file @p descriptor as @p wanted says, as far as the
/// process may give files away. 0 or an `errno` value: EPERM where owner or group cannot be kept
/// and somebody who may read or write by @p wanted could not any more.
[[nodiscard]] int setAccess(int descriptor, const Access &wanted);

/// Copies all other extended attributes that the process may write. 0 or an `errno` value.
[[nodiscard]] int copyAttributes(int from, int to);

} // namespace MWCore
