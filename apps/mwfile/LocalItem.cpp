// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "apps/mwfile/LocalItem.h"

#include "apps/mwfile/Failure.h"
#include "apps/mwfile/ItemPath.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

namespace MWCore::mwfile {
namespace {

constexpr const char *kDevicesAreNotListed =
    "what lies below a path that begins with /dev is not listed";

/// Whether the library would leave the folder at this absolute path unlisted.
bool isDeviceFolder(const std::string &path) {
    return path.starts_with("/dev");
}

bool isThere(const std::string &path) {
    struct stat item = {};
    return stat(path.c_str(), &item) == 0;
}

} // namespace

ItemTree listedFolder(const std::string &path) {
    const std::string absolute = absolutePath(path);
    errno = 0;
    ItemTree folder(mfs_fso_get_local_fso(absolute.c_str()));
    const int error = errno;
    if (!folder) {
        if (error == EAGAIN)
            throw Failure(path, "the folder changes faster than it can be read");
        if (error != ENOMEM && isThere(path))
            throw Failure(path + ": its contents cannot be examined", error);
        throw Failure(path, error);
    }
    if (!mfs_fso_isDir(folder.get()))
        throw Failure(path, ENOTDIR);
    if (isDeviceFolder(absolute))
        throw Failure(path, kDevicesAreNotListed);
    if (error != 0)
        throw Failure(path, error);
    return folder;
}

DescribedItem describedItem(const std::string &path) {
    const bool folderMeant = path.ends_with('/');
    const std::string absolute = folderMeant ? followedPath(path) : absolutePath(path);
    ItemTree item(mfs_fso_get_local_item(absolute.c_str()));
    if (!item)
        throw Failure(path, errno);
    if (!mfs_fso_isDir(item.get()))
        return {std::move(item), ""};
    if (isDeviceFolder(absolute))
        return {std::move(item), kDevicesAreNotListed};
    errno = 0;
    ItemTree listed(mfs_fso_get_local_fso(absolute.c_str()));
    const int error = errno;
    if (error == ENOMEM)
        throw Failure(path, ENOMEM);
    return {listed ? std::move(listed) : std::move(item), error == 0 ? "" : std::strerror(error)};
}

uint32_t currentMode(const mfs_fso &item) {
    struct stat now = {};
    return fstatat(AT_FDCWD, item.complete_path, &now,
                   mfs_fso_isLink(&item) ? AT_SYMLINK_NOFOLLOW : 0) == 0
               ? now.st_mode
               : 0;
}

const NodeKind *nodeKind(const mfs_fso &item) {
    static constexpr NodeKind kinds[] = {
        {S_IFIFO, 'p', "fifo"},
        {S_IFSOCK, 's', "socket"},
        {S_IFBLK, 'b', "block device"},
        {S_IFCHR, 'c', "character device"},
    };
    if (item.type != MFS_TYPE_OTHER)
        return nullptr;
    const uint32_t type = currentMode(item) & S_IFMT;
    const auto *const found = std::ranges::find(kinds, type, &NodeKind::type);
    return found == std::end(kinds) ? nullptr : found;
}

const char *linkTarget(const mfs_fso &item) {
    const char *const target = item.alias_location;
    return target && *target == '/' ? target : nullptr;
}

} // namespace MWCore::mwfile
