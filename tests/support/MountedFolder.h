// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "tests/support/TemporaryFolder.h"

#include <string>

/// A file system for a single test, mounted where only this process and its children see it. It
/// disappears with them.
class MountedFolder {
public:
    /// @p type is "tmpfs", "ramfs" or, made on a loop device, "ext4", "xfs", "btrfs"; @p options
    /// are those of mount(8).
    explicit MountedFolder(const std::string &type, const std::string &options = "");
    MountedFolder(const MountedFolder &) = delete;
    MountedFolder &operator=(const MountedFolder &) = delete;
    ~MountedFolder();

    /// Why it could not be mounted (the machine may forbid it); empty if it is mounted.
    [[nodiscard]] const std::string &failureReason() const { return obstacle_; }

    [[nodiscard]] const std::string &path() const { return path_; }
    [[nodiscard]] std::string at(const std::string &name) const { return path_ + "/" + name; }

    /// Remounts it with other options, such as "ro"; returns whether that succeeded.
    [[nodiscard]] bool remount(const std::string &options) const;

private:
    [[nodiscard]] bool run(const std::string &command);

    TemporaryFolder folder_;
    std::string path_;
    std::string obstacle_;
};
