// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/FolderTurn.h"

#include <cerrno>
#include <chrono>
#include <thread>

#include <sys/file.h>

namespace MWCore {

FolderTurn::FolderTurn(const ItemPlace &place) : folder_(place.openFolder()) {
    using namespace std::chrono_literals;
    const auto end = std::chrono::steady_clock::now() + 2s;
    while (folder_ && flock(folder_.number(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK &&
           std::chrono::steady_clock::now() < end)
        std::this_thread::sleep_for(500us);
}

} // namespace MWCore
