// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/FolderLock.h"

#include "platform/files/RegularFile.h"

#include <cerrno>
#include <chrono>
#include <thread>

#include <sys/file.h>
#include <sys/stat.h>

namespace MWCore {

FolderLock::FolderLock(const ItemLocator &place) : locked_(place.openFolder(&status_)) {
    if (status_ == permErr)
        locked_ = openFileOrFolderAt(place.folder(), place.name(), &status_);
    if (status_ != tmfoErr && status_ != memFullErr)
        status_ = noErr;
    if (locked_)
        wait(place.folder());
}

/// Counts checks, half a millisecond apart, instead of measuring time: on a machine that is too
/// busy to run this loop, the other writers are too busy to finish.
void FolderLock::wait(int folder) const {
    using namespace std::chrono_literals;
    constexpr int kQuietChecks = 4'000;
    constexpr int kMostChecks = 20'000;
    struct stat before = {};
    struct stat now = {};
    int quiet = 0;
    for (int checks = 0; isHeldElsewhere() && quiet < kQuietChecks && checks < kMostChecks;
         ++checks) {
        std::this_thread::sleep_for(500us);
        const bool isQuiet =
            fstat(folder, &now) != 0 || (now.st_ctim.tv_sec == before.st_ctim.tv_sec &&
                                         now.st_ctim.tv_nsec == before.st_ctim.tv_nsec);
        quiet = isQuiet ? quiet + 1 : 0;
        before = now;
    }
}

/// Takes the lock, or returns true if somebody else holds it.
bool FolderLock::isHeldElsewhere() const {
    return flock(locked_.number(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

} // namespace MWCore
