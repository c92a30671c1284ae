// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#ifndef MFS_PATH_H
#define MFS_PATH_H

#include "mfs_export.h"

MFS_BEGIN_DECLS

/// Splits and joins POSIX paths without touching the file system. "/" is the only separator. A path
/// without "/" is its own last component, and the part before that is "".

/// The shared text "/". Some operations return it in place of a new text; it must not be freed.
MFS_EXPORT extern const char mfs_path_root[2];

/// 1 if @p path begins with "/", else 0; 0 for null.
MFS_EXPORT int mfs_path_is_absolute(const char *path);

/// Everything after the last "/": "/a/b" gives "b"; "/a/b/" and "/" give "".
MFS_EXPORT MFS_MUST_USE char *mfs_path_last_component(const char *path);

/// Everything before the last "/": "/a/b" gives "/a", "/a/b/" gives "/a/b", and "/a" deliberately
/// gives "". "/" itself gives the shared `mfs_path_root`; any other path gives a new text.
MFS_EXPORT MFS_MUST_USE char *mfs_path_without_last_component(const char *path);

/// Everything before the last "/", or "/" if that is the first character: "/a/b" gives "/a"; "/a"
/// and "/" give "/". Always a new text.
MFS_EXPORT MFS_MUST_USE char *experimental_mfs_path_without_last_component(const char *path);

/// The folder that contains the item; one trailing "/" is ignored: "/a/b/c" gives "/a/b", "/a/b/"
/// gives "/a", "/a" gives "/". "/" itself gives the shared `mfs_path_root`; any other path gives a
/// new text.
MFS_EXPORT MFS_MUST_USE char *mfs_parent_of_path(const char *path);

/// @p base + "/" + @p item, or @p base + @p item if @p base already ends with "/".
MFS_EXPORT MFS_MUST_USE char *mfs_path_by_appending_item(const char *base, const char *item);

MFS_END_DECLS

#endif
