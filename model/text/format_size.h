// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mwcore_export.h>

#include <cstdint>

namespace MWCore {

/// A number of bytes as a short text: "500", "1.5KB", "1.524MB". Units are binary. The digits after
/// the point are deliberately not a decimal fraction, but the remainder divided by a constant of
/// the unit; they are omitted if that is 4 or less. The caller frees the text. Null if memory runs
/// out. Any thread.
[[nodiscard]] MWCORE_EXPORT char *format_size(uint64_t size);

} // namespace MWCore
