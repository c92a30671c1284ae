// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <functional>
#include <string>

/// A FUSE file system whose program never answers, as if its server were gone. The process must
/// have a mount namespace of its own (MountedFolder). The destructor unmounts it and so releases
/// any process that waits for it.
class UnresponsiveMount {
public:
    explicit UnresponsiveMount(const std::string &path, const std::string &source = "/dev/sdx");
    UnresponsiveMount(const UnresponsiveMount &) = delete;
    UnresponsiveMount &operator=(const UnresponsiveMount &) = delete;
    ~UnresponsiveMount();

    /// Why it could not be mounted (the machine may forbid it); empty if it is mounted.
    [[nodiscard]] const std::string &failureReason() const { return obstacle_; }

private:
    std::string path_;
    std::string obstacle_;
    int connection_ = -1;
};

/// As runForked(), but ends a process that hangs; the result is then above 127.
int runWithTimeout(const std::function<int()> &work);
