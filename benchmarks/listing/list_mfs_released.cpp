// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// This library, including the time to release all records.
#include "benchmarks/support/contender.h"
#include "core/mfs.h"

namespace {

long list(const char *path) {
    mfs_fso *const folder = mfs_fso_get_local_fso(path);
    const long entries =
        folder ? mfs_fso_file_count(folder) + mfs_fso_subdirectory_count(folder) : -1;
    mfs_fso_destroy_tree(folder);
    return entries;
}

} // namespace

int main(int argumentCount, char **arguments) {
    return contender::run(argumentCount, arguments, list);
}
