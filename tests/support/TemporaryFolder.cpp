// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/support/TemporaryFolder.h"

#include "tests/support/Process.h"

#include <cerrno>
#include <filesystem>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

void check(bool done, const std::string &path) {
    if (!done)
        throw std::system_error(errno, std::generic_category(), path);
}

} // namespace

TemporaryFolder::TemporaryFolder() {
    std::string pattern =
        std::filesystem::canonical(std::filesystem::temp_directory_path()) / "mwcore-test-XXXXXX";
    check(mkdtemp(pattern.data()) != nullptr, pattern);
    path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
    runProcess({"rm", "-rf", path_}); // also what is nested too deep for a path
}

std::string TemporaryFolder::file(const std::string &name, off_t size) const {
    constexpr mode_t kMode = 0644;
    const std::string path = at(name);
    const int descriptor = open(path.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, kMode);
    check(descriptor >= 0 && ftruncate(descriptor, size) == 0, path);
    close(descriptor);
    return path;
}

std::string TemporaryFolder::folder(const std::string &name) const {
    constexpr mode_t kMode = 0755;
    const std::string path = at(name);
    check(mkdir(path.c_str(), kMode) == 0, path);
    return path;
}

std::string TemporaryFolder::link(const std::string &name, const std::string &target) const {
    const std::string path = at(name);
    check(symlink(target.c_str(), path.c_str()) == 0, path);
    return path;
}

std::string TemporaryFolder::fifo(const std::string &name) const {
    constexpr mode_t kMode = 0644;
    const std::string path = at(name);
    check(mkfifo(path.c_str(), kMode) == 0, path);
    return path;
}
