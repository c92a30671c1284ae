// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mwcore_export.h>

#include <cstdint>

namespace MWCore {

/// A number of bytes as a short text: "500", "1.5KB", "1.524MB". Units are binary. What stands
/// behind the point is deliberately no decimal fraction but the rest, divided by a constant of the
/// unit, where that is more than 4. The caller frees it; null when memory ran out. Any thread.
[[nodiscard]] MWCORE_EXPORT char *format_size(uint64_t size);

} // namespace MWCore
