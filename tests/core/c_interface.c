/* SPDX-License-Identifier: MIT */
/* SPDX-FileCopyrightText: The MWCore authors */
/* The interface as a C11 program sees it. */
#include "core/mfs.h"

#include <stddef.h>

/* The record as it is promised: 26 fields in this order with these widths. */
struct promised {
    int32_t location, type, target_type;
    char *alias_location, *complete_alias_path, *access_perms;
    uint16_t permissions;
    char *date_modified, *extension;
    int64_t mod_time;
    char *name, *owner, *group;
    int32_t links, size;
    struct mfs_fso *parent;
    int32_t iter_index, iter_array_index, iter_in_folders;
    void *reserved;
    char *complete_path, *url;
    mfs_array *files, *subdirectories;
    void *object;
    int32_t has_object;
};
#define AS_PROMISED(field)                                                                         \
    _Static_assert(offsetof(mfs_fso, field) == offsetof(struct promised, field), #field)
AS_PROMISED(location);
AS_PROMISED(type);
AS_PROMISED(target_type);
AS_PROMISED(alias_location);
AS_PROMISED(complete_alias_path);
AS_PROMISED(access_perms);
AS_PROMISED(permissions);
AS_PROMISED(date_modified);
AS_PROMISED(extension);
AS_PROMISED(mod_time);
AS_PROMISED(name);
AS_PROMISED(owner);
AS_PROMISED(group);
AS_PROMISED(links);
AS_PROMISED(size);
AS_PROMISED(parent);
AS_PROMISED(iter_index);
AS_PROMISED(iter_array_index);
AS_PROMISED(iter_in_folders);
AS_PROMISED(reserved);
AS_PROMISED(complete_path);
AS_PROMISED(url);
AS_PROMISED(files);
AS_PROMISED(subdirectories);
AS_PROMISED(object);
AS_PROMISED(has_object);
_Static_assert(sizeof(mfs_perms) == 4, "nine flags in one word");

/* Lists a folder and walks it; the number of children met, or -1. */
int count_by_iteration(const char *path) {
    int count = 0;
    mfs_fso *folder = mfs_fso_get_local_fso(path);
    if (!folder)
        return -1;
    mfs_fso_reset(folder);
    while (mfs_fso_next_item(folder))
        ++count;
    mfs_fso_destroy_tree(folder);
    return count;
}
