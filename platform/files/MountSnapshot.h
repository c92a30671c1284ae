// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/files/MountTable.h"

#include <optional>

namespace MWCore {

/// The mount table as it was at the first call. For operations that take moments. Belongs to one
/// thread.
class MountSnapshot {
public:
    [[nodiscard]] const std::vector<Mount> &mounts() {
        if (!mounts_)
            mounts_ = mountTable();
        return *mounts_;
    }

private:
    std::optional<std::vector<Mount>> mounts_;
};

} // namespace MWCore
