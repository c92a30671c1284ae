// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/support/SlowMount.h"

#include <array>
#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <linux/fuse.h>
#include <poll.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

constexpr std::size_t kLongestRequest = 1 << 17;
constexpr int kPatience = 20'000; // milliseconds

} // namespace

SlowMount::SlowMount(const std::string &path)
    : path_(path), connection_(open("/dev/fuse", O_RDWR | O_CLOEXEC)) {
    const std::string options =
        "fd=" + std::to_string(connection_) + ",rootmode=40000,user_id=0,group_id=0,allow_other";
    if (connection_ < 0 || mount("slow", path.c_str(), "fuse", 0, options.c_str()) != 0)
        obstacle_ = std::string("cannot mount a FUSE file system: ") + strerror(errno);
}

SlowMount::~SlowMount() {
    if (obstacle_.empty())
        umount2(path_.c_str(), MNT_DETACH);
    close(connection_);
}

bool SlowMount::hasNext(int milliseconds) const {
    pollfd descriptor = {connection_, POLLIN, 0};
    return poll(&descriptor, 1, milliseconds) == 1;
}

std::string SlowMount::nextName() {
    std::vector<char> request(kLongestRequest);
    while (hasNext(kPatience) && read(connection_, request.data(), request.size()) > 0) {
        fuse_in_header header = {};
        std::memcpy(&header, request.data(), sizeof header);
        fuse_init_out start = {};
        start.major = FUSE_KERNEL_VERSION;
        start.minor = FUSE_KERNEL_MINOR_VERSION;
        start.flags = FUSE_PARALLEL_DIROPS;
        start.max_write = 4096;
        fuse_attr_out folder = {};
        folder.attr.mode = S_IFDIR | 0755;
        switch (header.opcode) {
        case FUSE_INIT:
            reply(header.unique, 0, &start, sizeof start);
            break;
        case FUSE_GETATTR:
            reply(header.unique, 0, &folder, sizeof folder);
            break;
        case FUSE_LOOKUP:
            waiting_.push_back(header.unique);
            return request.data() + sizeof header;
        case FUSE_FORGET:
        case FUSE_BATCH_FORGET:
        case FUSE_INTERRUPT:
            break; // not to be answered
        default:
            reply(header.unique, ENOSYS);
        }
    }
    return {};
}

void SlowMount::answer() {
    for (const uint64_t request : std::exchange(waiting_, {}))
        reply(request, ENOENT);
}

void SlowMount::reply(uint64_t request, int error, const void *data, std::size_t size) const {
    fuse_out_header header = {};
    header.len = static_cast<uint32_t>(sizeof header + size);
    header.error = -error;
    header.unique = request;
    const std::array parts = {iovec{&header, sizeof header},
                              iovec{const_cast<void *>(data), size}}; // only read
    [[maybe_unused]] const ssize_t written =
        writev(connection_, parts.data(), static_cast<int>(parts.size()));
}
