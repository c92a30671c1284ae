/* SPDX-License-Identifier: MIT */
/* SPDX-FileCopyrightText: The MWCore authors */
/* The interface compiled as C11. */
#include "core/mfs.h"

#include <stddef.h>

/* The guaranteed layout of a record: 26 fields in this order with these widths. */
struct guaranteed {
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
/* clang-format off */
#define FIELDS(F)                                                                              \
    F(location) F(type) F(target_type) F(alias_location) F(complete_alias_path)                \
    F(access_perms) F(permissions) F(date_modified) F(extension) F(mod_time) F(name) F(owner)  \
    F(group) F(links) F(size) F(parent) F(iter_index) F(iter_array_index) F(iter_in_folders)   \
    F(reserved) F(complete_path) F(url) F(files) F(subdirectories) F(object) F(has_object)
/* clang-format on */
#define CHECK_OFFSET(field)                                                                        \
    _Static_assert(offsetof(mfs_fso, field) == offsetof(struct guaranteed, field), #field);
FIELDS(CHECK_OFFSET)
_Static_assert(sizeof(mfs_perms) == 4, "nine flags in one word");

/* Lists a folder and iterates over its children; returns their number, or -1. */
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
