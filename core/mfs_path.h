// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#ifndef MFS_PATH_H
#define MFS_PATH_H

#include "mfs_export.h"

MFS_BEGIN_DECLS

/// Splitting and joining POSIX paths. "/" is the only separator and no operation touches the file
/// system. Without any "/" the last component is the whole text and what comes before it is "".

/// The shared text "/". Some operations return it in place of a fresh text; it must not be freed.
MFS_EXPORT extern const char mfs_path_root[2];

/// 1 when @p path begins with "/", else 0; 0 for null.
MFS_EXPORT int mfs_path_is_absolute(const char *path);

/// Everything after the last "/", fresh: "/a/b" gives "b"; "/a/b/" and "/" give "".
MFS_EXPORT MFS_MUST_USE char *mfs_path_last_component(const char *path);

/// Everything before the last "/": "/a/b" gives "/a", "/a/b/" gives "/a/b", and "/a" deliberately
/// gives "". Exactly "/" gives the shared `mfs_path_root`, anything else a fresh text.
MFS_EXPORT MFS_MUST_USE char *mfs_path_without_last_component(const char *path);

/// Everything before the last "/", but "/" when that is the first character: "/a/b" gives "/a";
/// "/a" and "/" give "/". Always fresh.
MFS_EXPORT MFS_MUST_USE char *experimental_mfs_path_without_last_component(const char *path);

/// The folder that holds the item, one "/" at the end being ignored: "/a/b/c" gives "/a/b", "/a/b/"
/// gives "/a", "/a" gives "/". Exactly "/" gives the shared `mfs_path_root`, anything else a fresh
/// text.
MFS_EXPORT MFS_MUST_USE char *mfs_parent_of_path(const char *path);

/// @p base + "/" + @p item, fresh, without the "/" when @p base already ends with one.
MFS_EXPORT MFS_MUST_USE char *mfs_path_by_appending_item(const char *base, const char *item);

MFS_END_DECLS

#endif
