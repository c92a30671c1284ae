// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/PathParts.h"

#include "core/posix/allocation.h"

#include <unistd.h>

namespace MWCore {

QByteArray absolutePath(const QByteArray &path) {
    if (path.startsWith('/'))
        return path;
    const Text folder(getcwd(nullptr, 0));
    const QByteArray current = folder.get();
    if (!current.startsWith('/'))
        return {}; // removed, or outside this process's root
    return pathIn(current, path);
}

} // namespace MWCore
