// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/FolderTurn.h"

#include "platform/files/RegularFile.h"

#include <cerrno>
#include <chrono>
#include <thread>

#include <sys/file.h>
#include <sys/stat.h>

namespace MWCore {

FolderTurn::FolderTurn(const ItemPlace &place) : locked_(place.openFolder()) {
    if (!locked_)
        status_ = statusFromErrno(errno);
    if (status_ == permErr)
        locked_ = openFileOrFolderAt(place.folder(), place.name(), &status_);
    if (status_ != tmfoErr && status_ != memFullErr)
        status_ = noErr;
    if (locked_)
        wait(place.folder());
}

/// Counts its looks, half a millisecond apart, rather than the time: on a machine that is too busy
/// to look, others are too busy to finish.
void FolderTurn::wait(int folder) const {
    using namespace std::chrono_literals;
    constexpr int kQuietLooks = 4'000;
    constexpr int kMostLooks = 20'000;
    struct stat before = {};
    struct stat now = {};
    int quiet = 0;
    for (int looks = 0; isHeld() && quiet < kQuietLooks && looks < kMostLooks; ++looks) {
        std::this_thread::sleep_for(500us);
        const bool isQuiet =
            fstat(folder, &now) != 0 || (now.st_ctim.tv_sec == before.st_ctim.tv_sec &&
                                         now.st_ctim.tv_nsec == before.st_ctim.tv_nsec);
        quiet = isQuiet ? quiet + 1 : 0;
        before = now;
    }
}

/// Whether somebody else has the lock; takes it otherwise.
bool FolderTurn::isHeld() const {
    return flock(locked_.number(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
}

} // namespace MWCore
