// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/foundation/mwcore_export.h"

#include <cstdint>
#include <optional>
#include <vector>

#include <QByteArray>

namespace MWCore {

/// One line of /proc/self/mountinfo (proc_pid_mountinfo(5)).
struct Mount {
    int32_t id = 0;
    int32_t parent = 0;  ///< id of the mount that it is mounted on
    uint64_t device = 0; ///< st_dev of its items
    QByteArray root;     ///< the folder of the file system that is mounted; empty if unknown
    QByteArray mountPoint;
    QByteArray type;
    QByteArray source; ///< "/dev/sda1", "tmpfs", ...
};

/// All mounts that this process sees, in the order in which they were mounted, including "/" even
/// if the kernel does not list it. Empty on failure.
[[nodiscard]] std::vector<Mount> mountTable();

/// The mounts in @p mountInfo, the content of that file. Malformed lines are skipped.
[[nodiscard]] std::vector<Mount> parseMountTable(QByteArrayView mountInfo);

/// The id of the mount that holds the item at @p path, relative to the open folder @p folder (or
/// AT_FDCWD); the device number if the kernel has no mount ids (before 5.8). Does not open the
/// item, follow a link, trigger an automount or contact a server. An empty path means the folder. 0
/// if the item cannot be examined.
[[nodiscard]] uint64_t mountIdOf(int folder, const char *path);

/// Whether the open item @p descriptor is on @p mount. Does not contact a server.
[[nodiscard]] bool isOnMount(int descriptor, const Mount &mount);

/// Whether @p path is @p folder or below it, compared as text.
[[nodiscard]] bool isAtOrBelow(const QByteArray &path, const QByteArray &folder);

/// The mounts that @p path, an absolute path without links, passes through, from the mount of "/"
/// to the one that holds the item. Mounts hidden by another mount are left out.
[[nodiscard]] std::vector<const Mount *> mountsAlongPath(const QByteArray &path,
                                                         const std::vector<Mount> &mounts);

/// The mount that holds the item at @p path: the last of mountsAlongPath(). Null if there is none.
[[nodiscard]] MWCORE_EXPORT const Mount *mountOf(const QByteArray &path,
                                                 const std::vector<Mount> &mounts);

} // namespace MWCore
