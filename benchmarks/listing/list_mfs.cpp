// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// This library, with every field and text of every record.
#include "benchmarks/support/contender.h"

#include "core/mfs.h"

namespace {

long list(const char *path) {
    const mfs_fso *const folder = mfs_fso_get_local_fso(path);
    return folder ? mfs_fso_file_count(folder) + mfs_fso_subdirectory_count(folder) : -1;
}

} // namespace

int main(int argumentCount, char **arguments) {
    return contender::run(argumentCount, arguments, list);
}
