// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/foundation/OSStatus.h"

#include <optional>

#include <QByteArray>

#include <sys/types.h>

namespace MWCore {

constexpr mode_t kNewFileMode = 0666;              ///< less the process's umask
constexpr auto kAnyUser = static_cast<uid_t>(-1);  ///< leaves the owner that a new file has
constexpr auto kAnyGroup = static_cast<gid_t>(-1); ///< the same for its group

/// Who may read and write a file.
struct Access {
    mode_t mode; ///< the nine permission bits
    uid_t owner;
    gid_t group;

    /// The value of the attribute kAccessList; empty if there is none. nullopt if the file system
    /// does not support lists, or to leave what a new file has.
    std::optional<QByteArray> list = std::nullopt;
};

constexpr const char *kAccessList = "system.posix_acl_access";

/// The access of any new file.
[[nodiscard]] inline Access accessOfNewFile() {
    return {kNewFileMode, kAnyUser, kAnyGroup};
}

/// Who may read and write the open file @p descriptor. nullopt on failure, with the cause in
/// @p status.
[[nodiscard]] std::optional<Access> accessOf(int descriptor, OSStatus *status);

/// Sets who may read and write the open file @p descriptor. If this process may not change owner or
/// group, they stay as they are, unless somebody whom @p wanted allows to read or write would lose
/// access by that: permErr.
[[nodiscard]] OSStatus setAccess(int descriptor, const Access &wanted);

/// Copies all extended attributes but kAccessList from one open file to another, except those that
/// this process may not write.
[[nodiscard]] OSStatus copyAttributes(int from, int to);

} // namespace MWCore
