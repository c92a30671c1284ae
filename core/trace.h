// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

namespace MWCore {

/// Writes to the trace stream, if one is set. Leaves `errno` unchanged.
[[gnu::format(printf, 1, 2)]] void trace(const char *format, ...);

} // namespace MWCore
