// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>
#include <string>

/// A folder for a single test. The destructor removes it with its contents. An item that cannot be
/// made fails the test by an exception.
class TemporaryFolder {
public:
    TemporaryFolder();
    TemporaryFolder(const TemporaryFolder &) = delete;
    TemporaryFolder &operator=(const TemporaryFolder &) = delete;
    ~TemporaryFolder();

    /// Without links and without a trailing "/".
    [[nodiscard]] const std::string &path() const { return path_; }

    /// The path of @p name in the folder.
    [[nodiscard]] std::string at(const std::string &name) const { return path_ + "/" + name; }

    // Each makes an item and returns its path.
    std::string file(const std::string &name, uintmax_t size = 0) const;
    std::string folder(const std::string &name) const;
    std::string link(const std::string &name, const std::string &target) const;
    std::string fifo(const std::string &name) const;

    /// Makes the folders above it that are missing.
    std::string write(const std::string &name, const std::string &content) const;

    /// Gives the item @p name a sidecar that ends within its header.
    std::string damagedSidecar(const std::string &name) const;

private:
    std::string path_;
};
