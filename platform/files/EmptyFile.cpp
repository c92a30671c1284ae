// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/EmptyFile.h"

#include <cerrno>

#include <fcntl.h>

namespace MWCore {

OSStatus makeEmptyFile(const ItemLocator &place) {
    constexpr mode_t kReadAndWrite = 0666;
    const Descriptor made(openat(place.folder(), place.name().constData(),
                                 O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kReadAndWrite));
    return made ? noErr : statusFromErrno(errno);
}

} // namespace MWCore
