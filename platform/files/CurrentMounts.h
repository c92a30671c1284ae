// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/files/MountTable.h"

#include <memory>
#include <vector>

namespace MWCore {

/// mountTable(), read again only if a mount, the process's mount namespace or its root folder has
/// changed since the last call; to find that out costs two system calls. Never null. Any thread.
[[nodiscard]] MWCORE_EXPORT std::shared_ptr<const std::vector<Mount>> currentMounts();

} // namespace MWCore
