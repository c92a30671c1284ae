// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/files/CurrentMounts.h"

#include <memory>
#include <vector>

namespace MWCore {

/// The mount table as it was at the first call. For operations that take moments. Belongs to one
/// thread.
class MountSnapshot {
public:
    [[nodiscard]] const std::vector<Mount> &mounts() {
        if (!mounts_)
            mounts_ = currentMounts();
        return *mounts_;
    }

private:
    std::shared_ptr<const std::vector<Mount>> mounts_;
};

} // namespace MWCore
