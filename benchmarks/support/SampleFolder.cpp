// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "benchmarks/support/SampleFolder.h"

#include <cstdio>
#include <ctime>
#include <string>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using Names = SampleFolder::Names;

std::string nameOf(long number, Names names) {
    const bool hasDot = names == Names::SomeWithADot && number % 100 == 99;
    char name[48];
    std::snprintf(name, sizeof name, "%chotograph-%09ld.jpeg", hasDot ? '.' : 'p', number);
    return name;
}

void makeEntry(int folder, long number, Names names) {
    constexpr mode_t kFolderMode = 0755;
    constexpr mode_t kFileMode = 0644;
    constexpr std::time_t kDay = 86'400;
    const std::string name = nameOf(number, names);
    const long kind = number % 100;
    if (kind < 5) {
        check(mkdirat(folder, name.c_str(), kFolderMode) == 0, "mkdirat");
    } else if (kind < 7) {
        check(symlinkat(nameOf(number + 2, names).c_str(), folder, name.c_str()) == 0, "symlinkat");
    } else {
        const int file = openat(folder, name.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, kFileMode);
        check(file >= 0 && ftruncate(file, number % 100'000) == 0, "openat");
        close(file);
    }
    const std::time_t seconds = std::time(nullptr) - number * 7919 % (400 * kDay);
    const timespec times[2] = {{seconds, 0}, {seconds, 0}};
    check(utimensat(folder, name.c_str(), times, AT_SYMLINK_NOFOLLOW) == 0, "utimensat");
}

} // namespace

SampleFolder::SampleFolder(long entries, Names names) {
    const int folder = open(path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    check(folder >= 0, "open");
    for (long number = 0; number < entries; ++number)
        makeEntry(folder, number, names);
    close(folder);
}
