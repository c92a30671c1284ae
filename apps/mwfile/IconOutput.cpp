// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "IconOutput.h"

#include "Failure.h"
#include "IconSource.h"
#include "ItemPath.h"

#include <MWCore/FileCatalogue.h>
#include <MWCore/FileSystemText.h>

#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <optional>

#include <sys/stat.h>
#include <sys/statvfs.h>
#include <unistd.h>

namespace MWCore::mwfile {
namespace {

/// nullopt if nothing is there.
std::optional<struct stat> itemAt(const std::string &path) {
    struct stat item = {};
    return stat(path.c_str(), &item) == 0 ? std::optional(item) : std::nullopt;
}

/// The folder of the item; "." for a name alone.
std::string folderOf(const std::string &path) {
    const std::string folder = std::filesystem::path(path).parent_path().string();
    return folder.empty() ? "." : folder;
}

bool hasSpace(const std::string &path, int64_t bytes) {
    struct statvfs fileSystem = {};
    if (statvfs(path.c_str(), &fileSystem) != 0)
        return true; // not known
    const bool hasFiles = fileSystem.f_files == 0 || fileSystem.f_favail > 0;
    return hasFiles && fileSystem.f_bavail > static_cast<uint64_t>(bytes) / fileSystem.f_frsize;
}

bool isBrokenLink(const std::string &path) {
    struct stat item = {};
    return lstat(path.c_str(), &item) == 0 && !itemAt(path);
}

} // namespace

bool isLocked(const std::string &path) {
    FSCatalogInfo info;
    return FSGetCatalogInfoForPath(QByteArray::fromStdString(path), kFSCatInfoNodeFlags, &info) ==
               noErr &&
           info.nodeFlags.testFlag(kFSNodeLockedMask);
}

QString pathText(const std::string &path) {
    return stringWithFileSystemRepresentation(absolutePath(path));
}

void writeFamily(const IconFamily &family, const std::string &path, Existing existing) {
    const std::optional<struct stat> item = itemAt(path);
    if (item && !S_ISREG(item->st_mode))
        throw Failure(path, S_ISDIR(item->st_mode) ? "a folder" : "not a regular file");
    if (item && existing == Existing::Keep && item->st_size > 0 && !familyInFile(path))
        throw Failure(path, "not an icon family; only --force replaces it");
    if (family.writeToFile(pathText(path)))
        return;
    const std::string obstacle = writingObstacle(path, family.data().size());
    throw Failure(path, obstacle.empty() ? "cannot be written" : obstacle);
}

std::string writingObstacle(const std::string &path, int64_t bytes) {
    FSRef ref;
    if (FSPathMakeRef(QByteArray::fromStdString(absolutePath(path)), &ref) == noErr &&
        ref.isBehindForeignLink)
        return statusText(foreignLinkErr);
    if (isBrokenLink(path))
        return "a broken link";
    if (isLocked(path))
        return "it is locked";
    const std::string folder = folderOf(path);
    const std::string &changed = itemAt(path) ? path : folder;
    if (access(changed.c_str(), W_OK) != 0)
        return statusText(statusFromErrno(errno));
    return hasSpace(changed, bytes) ? "" : statusText(dskFulErr);
}

} // namespace MWCore::mwfile
