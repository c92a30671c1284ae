// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "apps/mwfile/LocalItem.h"

#include "apps/mwfile/Failure.h"
#include "apps/mwfile/ItemPath.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

namespace MWCore::mwfile {
namespace {

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
        throw Failure(path, "what lies below a path that begins with /dev is not listed");
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
        return {std::move(item), false};
    errno = 0;
    ItemTree listed(mfs_fso_get_local_fso(absolute.c_str()));
    if (errno == ENOMEM)
        throw Failure(path, ENOMEM);
    if (!listed)
        return {std::move(item), false};
    return {std::move(listed), errno == 0 && !isDeviceFolder(absolute)};
}

uint32_t currentMode(const mfs_fso &item) {
    struct stat now = {};
    return fstatat(AT_FDCWD, item.complete_path, &now,
                   mfs_fso_isLink(&item) ? AT_SYMLINK_NOFOLLOW : 0) == 0
               ? now.st_mode
               : 0;
}

const char *linkTarget(const mfs_fso &item) {
    const char *const target = item.alias_location;
    return target && *target == '/' ? target : nullptr;
}

} // namespace MWCore::mwfile
