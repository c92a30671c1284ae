// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/mfs_path.h"

#include "core/posix/allocation.h"
#include "core/text_views.h"

using MWCore::beforeLastSlash;
using MWCore::containingFolder;
using MWCore::copied;

namespace {

constexpr std::string_view kRoot = "/";

/// The shared text in the type that the interface returns.
char *sharedRoot() {
    return const_cast<char *>(mfs_path_root);
}

} // namespace

const char mfs_path_root[2] = "/";

int mfs_path_is_absolute(const char *path) {
    return path && MWCore::isAbsolute(path);
}

char *mfs_path_last_component(const char *path) {
    if (!path)
        return nullptr;
    return copied(MWCore::lastComponent(path), "mfs_path_last_component").release();
}

char *mfs_path_without_last_component(const char *path) {
    if (!path)
        return nullptr;
    if (path == kRoot)
        return sharedRoot();
    return copied(beforeLastSlash(path), "mfs_path_without_last_component").release();
}

char *experimental_mfs_path_without_last_component(const char *path) {
    if (!path)
        return nullptr;
    return copied(containingFolder(path), "experimental_mfs_path_without_last_component").release();
}

char *mfs_parent_of_path(const char *path) {
    if (!path)
        return nullptr;
    std::string_view item = path;
    if (item == kRoot)
        return sharedRoot();
    if (item.ends_with('/'))
        item.remove_suffix(1);
    return copied(containingFolder(item), "mfs_parent_of_path").release();
}

char *mfs_path_by_appending_item(const char *base, const char *item) {
    if (!base || !item)
        return nullptr;
    return MWCore::joinedPath(base, item, "mfs_path_by_appending_item").release();
}
