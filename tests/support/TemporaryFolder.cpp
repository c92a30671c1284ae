// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/support/TemporaryFolder.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

#include <sys/stat.h>

namespace fs = std::filesystem;

TemporaryFolder::TemporaryFolder() {
    path_ = fs::canonical(fs::temp_directory_path()) / "mwcore-test-XXXXXX";
    if (!mkdtemp(path_.data()))
        throw std::system_error(errno, std::generic_category(), path_);
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

std::string TemporaryFolder::file(const std::string &name, uintmax_t size) const {
    const std::ofstream made(at(name));
    fs::resize_file(at(name), size);
    return at(name);
}

std::string TemporaryFolder::write(const std::string &name, const std::string &content) const {
    fs::create_directories(fs::path(at(name)).parent_path());
    if (!(std::ofstream(at(name), std::ios::binary) << content))
        throw std::system_error(errno, std::generic_category(), at(name));
    return at(name);
}

std::string TemporaryFolder::damagedSidecar(const std::string &name) const {
    return write("._" + name, std::string("\0\5\x16\7\0\2\0\0", 8));
}

std::string TemporaryFolder::folder(const std::string &name) const {
    fs::create_directories(at(name));
    return at(name);
}

std::string TemporaryFolder::link(const std::string &name, const std::string &target) const {
    fs::create_symlink(target, at(name));
    return at(name);
}

std::string TemporaryFolder::fifo(const std::string &name) const {
    constexpr mode_t kMode = 0644;
    if (mkfifo(at(name).c_str(), kMode) != 0)
        throw std::system_error(errno, std::generic_category(), at(name));
    return at(name);
}
