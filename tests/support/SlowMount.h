// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// A FUSE file system that is an empty folder and looks up a name only when the test says so. The
/// process must have a mount namespace of its own (MountedFolder).
class SlowMount {
public:
    explicit SlowMount(const std::string &path);
    SlowMount(const SlowMount &) = delete;
    SlowMount &operator=(const SlowMount &) = delete;
    ~SlowMount();

    /// Why it could not be mounted (the machine may forbid it); empty if it is mounted.
    [[nodiscard]] const std::string &failureReason() const { return obstacle_; }

    /// The name that a thread looks up next and waits for; empty if none comes in 20 seconds.
    [[nodiscard]] std::string nextName();

    /// Whether a thread looks up another name within @p milliseconds.
    [[nodiscard]] bool hasNext(int milliseconds) const;

    /// Answers all who wait that there is no such item.
    void answer();

private:
    void reply(uint64_t request, int error, const void *data = nullptr, std::size_t size = 0) const;

    std::string path_;
    std::string obstacle_;
    int connection_ = -1;
    std::vector<uint64_t> waiting_;
};
