// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

namespace MWCore {

/// What to do with a symbolic link at the end of a path. Links before it are followed.
enum class FinalLink { Keep, Follow };

} // namespace MWCore
