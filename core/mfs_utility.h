// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#ifndef MFS_UTILITY_H
#define MFS_UTILITY_H

#include "mfs_export.h"

#include <stdint.h>
#include <stdio.h>

MFS_BEGIN_DECLS

/// The number of blanks (' ' alone) at the start; 0 for null.
MFS_EXPORT int32_t mfs_utility_front_spaces(const char *text);

/// A fresh copy without the blanks at the start and the blanks, carriage returns and line feeds at
/// the end. A text of nothing else gives the empty text.
MFS_EXPORT MFS_MUST_USE char *mfs_utility_despace_string(const char *text);

/// A short size text, fresh. The thresholds and divisors are deliberately unequal, and the number
/// is truncated, narrowed to 32 bits and followed by a blank and the unit:
///
/// | bytes                         | divisor       | unit           |
/// |-------------------------------|---------------|----------------|
/// | up to 1,023, and negative     | 1             | "" (ends with the blank) |
/// | 1,024 to 1,023,999            | 1,024         | "k"            |
/// | 1,024,000 to 1,023,999,999    | 1,024,000     | "MB"           |
/// | 1,024,000,000 and more        | 1,024,000,000 | "GB"           |
MFS_EXPORT MFS_MUST_USE char *mfs_utility_format_size(int64_t bytes);

/// Sends the trace lines of every operation of this library to @p stream, which is not owned;
/// null silences them. Standard output until changed. Returns the stream so far, which other
/// threads may still be writing to. Any thread.
MFS_EXPORT FILE *mfs_set_trace_stream(FILE *stream);

MFS_END_DECLS

#endif
