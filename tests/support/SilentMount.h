// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <functional>
#include <string>

/// A FUSE file system whose program never answers, as one whose server is gone. Mounted by a
/// process that has mounts of its own (MountedFolder); it goes with this object, and whoever waits
/// for it is let go.
class SilentMount {
public:
    explicit SilentMount(const std::string &path, const std::string &source = "/dev/sdx");
    SilentMount(const SilentMount &) = delete;
    SilentMount &operator=(const SilentMount &) = delete;
    ~SilentMount();

    /// Why it could not be mounted: the machine may forbid it. Empty when it was.
    [[nodiscard]] const std::string &obstacle() const { return obstacle_; }

private:
    std::string path_;
    std::string obstacle_;
    int connection_ = -1;
};

/// As runForked(), but a process that waits for ever is ended: then the result is above 127.
int runGuarded(const std::function<int()> &work);
