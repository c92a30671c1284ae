/* SPDX-License-Identifier: MIT */
/* SPDX-FileCopyrightText: The MWCore authors */
/* Prints the number of items in a folder. */
#include <MWCore/mfs.h>

#include <stdio.h>

int main(int argc, char **argv) {
    mfs_fso *folder = argc == 2 ? mfs_fso_get_local_fso(argv[1]) : NULL;
    if (!folder)
        return 1;
    printf("%d\n", mfs_fso_file_count(folder) + mfs_fso_subdirectory_count(folder));
    mfs_fso_destroy_tree(folder);
    return 0;
}
