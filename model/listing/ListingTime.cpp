// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/listing/ListingTime.h"

#include "platform/files/CurrentMounts.h"
#include "platform/files/FileSystemTypes.h"
#include "platform/files/MountTable.h"
#include "platform/foundation/CoarseClock.h"

#include <algorithm>

#include <fcntl.h>

namespace MWCore {
namespace {

bool isOnLocalDisk(const QByteArray &path) {
    const auto id = static_cast<int32_t>(mountIdOf(AT_FDCWD, path.constData()));
    const auto mounts = currentMounts();
    const auto mount = std::ranges::find(*mounts, id, &Mount::id);
    return mount != mounts->end() && isLocalFileSystem(mount->type);
}

} // namespace

int64_t listingTime(const QByteArray &path) {
    return isOnLocalDisk(path) ? coarseTime(CLOCK_REALTIME_COARSE) : 0;
}

} // namespace MWCore
