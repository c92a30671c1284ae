// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "apps/mwfile/LocalItem.h"

#include "apps/mwfile/bytes.h"
#include "apps/mwfile/Failure.h"
#include "apps/mwfile/ItemPath.h"

#include <algorithm>
#include <cerrno>

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

DescribedItem described(RecordTree record, std::string contentsFailure) {
    auto object = MXFileSystemObject::newFSOWithCStruct(record.get());
    object->identify();
    return {std::move(record), std::move(object), std::move(contentsFailure)};
}

} // namespace

MXFileSystemObject::Ptr listedFolder(const std::string &path) {
    const std::string absolute = absolutePath(path);
    const QString text = stringWithFileSystemRepresentation(absolute);
    OSStatus error = noErr;
    MXFileSystemObject::Ptr folder = MXFileSystemObject::newFSOForLocalPath(text, &error);
    if (!folder) {
        if (error != folderChangesErr && error != memFullErr && isThere(path))
            throw Failure(path + ": its contents cannot be examined", error);
        throw Failure(path, error);
    }
    if (!folder->isDir())
        throw Failure(path, errFSNotAFolder);
    if (folder->contentsError() != noErr)
        throw Failure(path, folder->contentsError());
    return folder;
}

DescribedItem itemItself(const std::string &path) {
    const bool folderMeant = path.ends_with('/');
    const std::string absolute = folderMeant ? followedPath(path) : absolutePath(path);
    RecordTree item(mfs_fso_get_local_item(absolute.c_str()));
    if (!item)
        throw Failure(path, errno);
    return described(std::move(item), "");
}

DescribedItem describedItem(const std::string &path) {
    DescribedItem item = itemItself(path);
    const std::string absolute = item.record->complete_path;
    if (!mfs_fso_isDir(item.record.get()))
        return item;
    if (isDeviceFolder(absolute)) {
        item.contentsFailure = statusText(deviceFolderErr);
        return item;
    }
    errno = 0;
    RecordTree listed(mfs_fso_get_local_fso(absolute.c_str()));
    const int error = errno;
    if (error == ENOMEM)
        throw Failure(path, ENOMEM);
    DescribedItem whole = listed ? described(std::move(listed), "") : std::move(item);
    if (error != 0)
        whole.contentsFailure = std::strerror(error);
    return whole;
}

const NodeKind *nodeKind(const MXFileSystemObject &item) {
    static constexpr NodeKind kinds[] = {
        {S_IFIFO, 'p', "fifo"},
        {S_IFSOCK, 's', "socket"},
        {S_IFBLK, 'b', "block device"},
        {S_IFCHR, 'c', "character device"},
    };
    struct stat now = {};
    const mfs_fso &record = *item.cstruct();
    if (record.type != MFS_TYPE_OTHER || lstat(record.complete_path, &now) != 0)
        return nullptr;
    const auto *const found = std::ranges::find(kinds, now.st_mode & S_IFMT, &NodeKind::type);
    return found == std::end(kinds) ? nullptr : found;
}

bool isPointer(const MXFileSystemObject &item) {
    return mfs_fso_isLink(item.cstruct()) || item.isAlias();
}

bool isLost(const MXFileSystemObject &alias) {
    return alias.aliasOrLinkTargetKind() == MXItemKindUnknown;
}

std::optional<std::string> linkTarget(const MXFileSystemObject &link) {
    const char *const target = link.cstruct()->alias_location;
    return target && *target == '/' ? std::optional<std::string>(target) : std::nullopt;
}

std::optional<std::string> finalTarget(const MXFileSystemObject &item) {
    if (!item.isAlias())
        return linkTarget(item);
    return isLost(item) ? std::nullopt : std::optional(bytesOf(item.aliasOrLinkTargetPath()));
}

} // namespace MWCore::mwfile
