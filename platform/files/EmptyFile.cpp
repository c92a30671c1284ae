// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/EmptyFile.h"

#include "platform/files/AccessRights.h"

#include <cerrno>

#include <fcntl.h>

namespace MWCore {

OSStatus makeEmptyFile(const ItemLocator &place) {
    const Descriptor made(openat(place.folder(), place.name().constData(),
                                 O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kNewFileMode));
    return made ? noErr : statusFromErrno(errno);
}

} // namespace MWCore
