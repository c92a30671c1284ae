// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// The lower bound for a listing: reads the folder and calls stat for each entry, but keeps nothing.
#include "benchmarks/support/contender.h"

#include <cstdint>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

long list(const char *path) {
    const int folder = open(path, O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (folder < 0)
        return -1;
    long entries = 0;
    alignas(dirent64) static char buffer[32768];
    for (;;) {
        const ssize_t bytes = getdents64(folder, buffer, sizeof buffer);
        if (bytes <= 0)
            break;
        for (ssize_t offset = 0; offset < bytes;) {
            const auto *const entry = reinterpret_cast<const dirent64 *>(buffer + offset);
            offset += entry->d_reclen;
            struct stat item;
            if (std::strcmp(entry->d_name, ".") == 0 || std::strcmp(entry->d_name, "..") == 0 ||
                fstatat(folder, entry->d_name, &item, AT_SYMLINK_NOFOLLOW) != 0)
                continue;
            contender::use(item);
            ++entries;
        }
    }
    close(folder);
    return entries;
}

} // namespace

int main(int argumentCount, char **arguments) {
    return contender::run(argumentCount, arguments, list);
}
