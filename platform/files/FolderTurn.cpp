// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/FolderTurn.h"

#include "platform/files/RegularFile.h"

#include <cerrno>
#include <chrono>
#include <thread>

#include <sys/file.h>

namespace MWCore {

FolderTurn::FolderTurn(const ItemPlace &place) : locked_(place.openFolder()) {
    using namespace std::chrono_literals;
    if (!locked_)
        status_ = statusFromErrno(errno);
    if (status_ == permErr)
        locked_ = openFileOrFolderAt(place.folder(), place.name(), &status_);
    if (status_ != tmfoErr && status_ != memFullErr)
        status_ = noErr;
    const auto end = std::chrono::steady_clock::now() + 2s;
    while (locked_ && flock(locked_.number(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK &&
           std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(500us);
}

} // namespace MWCore
