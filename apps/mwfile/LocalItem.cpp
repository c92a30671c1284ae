// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "apps/mwfile/LocalItem.h"

#include "apps/mwfile/Failure.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>

#include <sys/stat.h>

namespace MWCore::mwfile {
namespace {

/// Whether the library would leave the folder at this absolute path unlisted.
bool isDeviceFolder(const std::string &path) {
    return path.starts_with("/dev");
}

} // namespace

std::string absolutePath(const std::string &path) {
    namespace fs = std::filesystem;
    if (path.empty())
        return path;
    std::error_code error;
    fs::path absolute = fs::absolute(path, error);
    const auto isDots = [](const fs::path &part) { return part == "." || part == ".."; };
    if (!error && std::any_of(absolute.begin(), absolute.end(), isDots)) {
        const bool keepsLast = absolute.has_filename() && !isDots(absolute.filename());
        absolute = keepsLast ? fs::canonical(absolute.parent_path(), error) / absolute.filename()
                             : fs::canonical(absolute, error);
    }
    if (error)
        throw Failure(path, error.value());
    std::string text = absolute.lexically_normal().string();
    while (text.size() > 1 && text.ends_with('/'))
        text.pop_back();
    return text;
}

ItemTree listedFolder(const std::string &path) {
    const std::string absolute = absolutePath(path);
    errno = 0;
    ItemTree folder(mfs_fso_get_local_fso(absolute.c_str()));
    if (!folder)
        throw Failure(path, errno);
    if (!mfs_fso_isDir(folder.get()))
        throw Failure(path, ENOTDIR);
    if (isDeviceFolder(absolute))
        throw Failure(path, "what lies below a path that begins with /dev is not listed");
    if (errno != 0)
        throw Failure(path, errno);
    return folder;
}

DescribedItem describedItem(const std::string &path) {
    const std::string absolute = absolutePath(path);
    const bool folderMeant = path.ends_with('/');
    ItemTree item(folderMeant ? mfs_fso_get_local_fso(absolute.c_str())
                              : mfs_fso_get_local_item(absolute.c_str()));
    if (!item)
        throw Failure(path, errno);
    if (!mfs_fso_isDir(item.get())) {
        if (folderMeant)
            throw Failure(path, ENOTDIR);
        return {std::move(item), false};
    }
    errno = 0;
    ItemTree listed(mfs_fso_get_local_fso(absolute.c_str()));
    if (!listed)
        return {std::move(item), false};
    return {std::move(listed), errno == 0 && !isDeviceFolder(absolute)};
}

uint32_t currentMode(const mfs_fso &item) {
    struct stat now {};
    return lstat(item.complete_path, &now) == 0 ? now.st_mode : 0;
}

const char *linkTarget(const mfs_fso &item) {
    const char *const target = item.alias_location;
    return target && *target == '/' ? target : nullptr;
}

} // namespace MWCore::mwfile
