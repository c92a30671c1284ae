// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "ItemPath.h"

#include <algorithm>
#include <filesystem>

#include <fcntl.h>
#include <sys/stat.h>

namespace MWCore::mwfile {
namespace {

/// As absolutePath(), but empty on failure and not verified.
std::string pathFromRoot(const std::string &path) {
    namespace fs = std::filesystem;
    std::error_code error;
    fs::path absolute = fs::absolute(path, error);
    const auto isDots = [](const fs::path &part) { return part == "." || part == ".."; };
    if (!error && std::any_of(absolute.begin(), absolute.end(), isDots)) {
        const bool keepsLast = absolute.has_filename() && !isDots(absolute.filename());
        absolute = keepsLast ? fs::canonical(absolute.parent_path(), error) / absolute.filename()
                             : fs::canonical(absolute, error);
    }
    if (error)
        return {};
    std::string text = absolute.lexically_normal().string();
    while (text.size() > 1 && text.ends_with('/'))
        text.pop_back();
    return text;
}

/// Whether both paths lead to the same item or to links with the same target.
bool isSameItem(const std::string &one, const std::string &other) {
    for (const int flags : {AT_SYMLINK_NOFOLLOW, 0}) {
        struct stat first = {};
        struct stat second = {};
        if (fstatat(AT_FDCWD, one.c_str(), &first, flags) == 0 &&
            fstatat(AT_FDCWD, other.c_str(), &second, flags) == 0 &&
            first.st_dev == second.st_dev && first.st_ino == second.st_ino)
            return true;
    }
    return false;
}

} // namespace

std::string absolutePath(const std::string &path) {
    const std::string resolved = pathFromRoot(path);
    return isSameItem(path, resolved) ? resolved : path;
}

std::string resolvedPath(const std::string &path) {
    std::error_code error;
    const std::filesystem::path followed = std::filesystem::canonical(path, error);
    return error ? path : followed.string();
}

} // namespace MWCore::mwfile
