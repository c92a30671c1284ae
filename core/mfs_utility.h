// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#ifndef MFS_UTILITY_H
#define MFS_UTILITY_H

#include "mfs_export.h"

#include <stdint.h>
#include <stdio.h>

MFS_BEGIN_DECLS

/// The number of leading blanks (' ' only); 0 for null.
MFS_EXPORT int32_t mfs_utility_front_spaces(const char *text);

/// A copy without leading blanks and without trailing blanks, carriage returns and line feeds. A
/// text of nothing else gives the empty text.
MFS_EXPORT MFS_MUST_USE char *mfs_utility_despace_string(const char *text);

/// A short size text: a number, a blank and a unit. The number is truncated to an integer and
/// narrowed to 32 bits. The thresholds and divisors are deliberately uneven:
///
/// | bytes                         | divisor       | unit           |
/// |-------------------------------|---------------|----------------|
/// | up to 1,023, and negative     | 1             | "" (ends with the blank) |
/// | 1,024 to 1,023,999            | 1,024         | "k"            |
/// | 1,024,000 to 1,023,999,999    | 1,024,000     | "MB"           |
/// | 1,024,000,000 and more        | 1,024,000,000 | "GB"           |
MFS_EXPORT MFS_MUST_USE char *mfs_utility_format_size(int64_t bytes);

/// Sends the trace lines of the whole library to @p stream, which stays the caller's; null silences
/// them. The default is standard output. Returns the previous stream, to which other threads may
/// still be writing. May be called from any thread.
MFS_EXPORT FILE *mfs_set_trace_stream(FILE *stream);

MFS_END_DECLS

#endif
