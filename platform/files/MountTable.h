// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <QByteArray>

namespace MWCore {

/// One line of /proc/self/mountinfo (proc_pid_mountinfo(5)).
struct Mount {
    int32_t id = 0;
    int32_t parent = 0;  ///< the mount that it is mounted on
    uint64_t device = 0; ///< as st_dev of what is in it
    QByteArray root;     ///< the folder of it that is seen there; empty when unknown
    QByteArray mountPoint;
    QByteArray type;
    QByteArray source; ///< "/dev/sda1", "tmpfs", ...
};

/// All file systems that this process sees, in the order in which they were mounted, "/" in any
/// case. Empty when the system does not tell.
[[nodiscard]] std::vector<Mount> mountTable();

/// The mounts that @p mountInfo, the content of that file, tells of. Lines of another form are
/// left out.
[[nodiscard]] std::vector<Mount> parseMountTable(QByteArrayView mountInfo);

/// The mount that the item @p path, relative to the open folder @p folder (or AT_FDCWD), is on, or
/// its device where the kernel does not tell (before 5.8): without opening it, following a link,
/// setting off an automount or asking a server. An empty path means the folder. 0 when it cannot be
/// examined.
[[nodiscard]] uint64_t mountIdOf(int folder, const char *path);

/// Whether the open item @p descriptor is on @p mount, asked as above.
[[nodiscard]] bool isOnMount(int descriptor, const Mount &mount);

/// Whether @p path is @p folder or below it, by their texts.
[[nodiscard]] bool isAtOrBelow(const QByteArray &path, const QByteArray &folder);

/// The mounts that the way from "/" to @p path, an absolute path without links, leads through, that
/// of the path last. Those hidden below another mount are none of them.
[[nodiscard]] std::vector<const Mount *> mountsOnWay(const QByteArray &path,
                                                     const std::vector<Mount> &mounts);

/// The last of them. Null when there is none.
[[nodiscard]] const Mount *mountOf(const QByteArray &path, const std::vector<Mount> &mounts);

} // namespace MWCore
