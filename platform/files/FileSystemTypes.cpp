// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/FileSystemTypes.h"

#include <algorithm>

namespace MWCore {
namespace {

constexpr QByteArrayView kLocalTypes[] = {
    "adfs",        "affs",     "apfs",   "bcachefs",  "befs",       "bfs",        "binder",
    "binfmt_misc", "bpf",      "btrfs",  "cgroup",    "cgroup2",    "configfs",   "cpuset",
    "cramfs",      "debugfs",  "devpts", "devtmpfs",  "ecryptfs",   "efivarfs",   "efs",
    "erofs",       "exfat",    "ext2",   "ext3",      "ext4",       "f2fs",       "fusectl",
    "hfs",         "hfsplus",  "hpfs",   "hugetlbfs", "iso9660",    "jffs2",      "jfs",
    "minix",       "mqueue",   "msdos",  "nilfs2",    "nsfs",       "ntfs",       "ntfs3",
    "omfs",        "overlay",  "proc",   "pstore",    "qnx4",       "qnx6",       "ramfs",
    "reiserfs",    "resctrl",  "romfs",  "rootfs",    "rpc_pipefs", "securityfs", "selinuxfs",
    "smackfs",     "squashfs", "sysfs",  "sysv",      "tmpfs",      "tracefs",    "ubifs",
    "udf",         "ufs",      "vfat",   "xfs",       "zfs",        "zonefs",
};

} // namespace

bool isLocalFileSystem(QByteArrayView type) {
    return std::ranges::find(kLocalTypes, type) != std::end(kLocalTypes);
}

bool isFuse(QByteArrayView type) {
    return type == "fuse" || type == "fuseblk" || type.startsWith("fuse.") ||
           type.startsWith("fuseblk.");
}

} // namespace MWCore
