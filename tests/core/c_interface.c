/* SPDX-License-Identifier: MIT */
/* SPDX-FileCopyrightText: The MWCore authors */
/* The interface as a C11 program sees it. */
#include "core/mfs.h"

#include <stddef.h>

/* The fields that stand in order with their widths, here on a 64-bit processor. */
#if UINTPTR_MAX == UINT64_MAX
_Static_assert(offsetof(mfs_fso, alias_location) == 16, "three integers come first");
_Static_assert(offsetof(mfs_fso, date_modified) == 48, "permissions take 16 bits");
_Static_assert(offsetof(mfs_fso, name) == 72, "the time takes 64 bits");
_Static_assert(offsetof(mfs_fso, parent) == 104, "links and size take 32 bits each");
_Static_assert(offsetof(mfs_fso, complete_path) == 136, "reserved stands before the path");
_Static_assert(offsetof(mfs_fso, has_object) == 176, "the last of the 26");
#endif
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
