// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/support/UnresponsiveMount.h"

#include "tests/support/Process.h"

#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/mount.h>
#include <unistd.h>

UnresponsiveMount::UnresponsiveMount(const std::string &path, const std::string &source)
    : path_(path), connection_(open("/dev/fuse", O_RDWR | O_CLOEXEC)) {
    const std::string options =
        "fd=" + std::to_string(connection_) + ",rootmode=40000,user_id=0,group_id=0,allow_other";
    if (connection_ < 0 || mount(source.c_str(), path.c_str(), "fuse", 0, options.c_str()) != 0)
        obstacle_ = std::string("cannot mount a FUSE file system: ") + strerror(errno);
}

UnresponsiveMount::~UnresponsiveMount() {
    if (obstacle_.empty())
        umount2(path_.c_str(), MNT_DETACH);
    close(connection_);
}

int runWithTimeout(const std::function<int()> &work) {
    return runForked([&work] {
        constexpr unsigned kSeconds = 20;
        alarm(kSeconds);
        return work();
    });
}
