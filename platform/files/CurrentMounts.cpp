// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/CurrentMounts.h"

#include "core/posix/Descriptor.h"

#include <cstdint>
#include <mutex>
#include <optional>

#include <fcntl.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace MWCore {
namespace {

using Mounts = std::shared_ptr<const std::vector<Mount>>;

/// Who looks at the mounts: a new namespace has mounts with ids of its own. A forked process shares
/// the descriptor, and with it the news that has been polled, so that it needs its own.
struct Viewpoint {
    uint64_t rootMount;
    uint64_t rootInode;
    pid_t process;

    bool operator==(const Viewpoint &) const = default;
};

/// nullopt if the kernel (before 5.8) does not report mount ids.
std::optional<Viewpoint> currentViewpoint() {
    struct statx root = {};
    const bool isKnown =
        statx(AT_FDCWD, "/", AT_STATX_DONT_SYNC, STATX_MNT_ID | STATX_INO, &root) == 0 &&
        (root.stx_mask & STATX_MNT_ID) != 0;
    return isKnown ? std::optional(Viewpoint{root.stx_mnt_id, root.stx_ino, getpid()})
                   : std::nullopt;
}

struct Known {
    std::mutex mutex;
    std::optional<Viewpoint> viewpoint;
    Descriptor watch; ///< reports each change of the table once (proc_pid_mounts(5))
    Mounts mounts;
};

bool isUnchanged(const Descriptor &watch) {
    pollfd news = {watch.number(), POLLPRI, 0};
    return watch && poll(&news, 1, 0) == 0;
}

Mounts read() {
    return std::make_shared<const std::vector<Mount>>(mountTable());
}

} // namespace

Mounts currentMounts() {
    static auto *const known = new Known; // never freed: threads may outlive main()
    const auto viewpoint = currentViewpoint();
    if (!viewpoint)
        return read();
    const std::scoped_lock lock(known->mutex);
    if (known->viewpoint != viewpoint || !isUnchanged(known->watch)) {
        // Changes are noticed from the moment that it is opened.
        known->watch = Descriptor(open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC));
        known->viewpoint = viewpoint;
        known->mounts = read();
    }
    return known->mounts;
}

} // namespace MWCore
