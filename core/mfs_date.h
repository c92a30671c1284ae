// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#ifndef MFS_DATE_H
#define MFS_DATE_H

#include "mfs_export.h"

#include <stdint.h>

MFS_BEGIN_DECLS

/// Times are 64-bit seconds since 1970-01-01 00:00:00 UTC, whatever the width of the processor's
/// time_t. Texts use the process's time zone and locale.

/// Formats a time as "Today, 14:05:09", "Yesterday, 09:00:00" or "Tue, Mar 04, 2008, 17:45:12". Any
/// time on today's date is "Today", even a future one. "Yesterday" is always in the current month,
/// so there is none on the first of a month. A time that the calendar cannot represent is given as
/// its number of seconds.
MFS_EXPORT MFS_MUST_USE char *mfs_date_string_from_time_t(int64_t seconds);

/// Parses the date column of a long listing, "Mmm dd hh:mm" or "Mmm dd  yyyy" in English, as local
/// time. Without a year, the date is in the current year, or in the last one if its month is later
/// than the current month. The second is always 1. Month names are recognised by a few letters, and
/// digits are not validated. Returns -1 if the text is too short, lacks a required number, or gives
/// a time that the calendar cannot represent.
MFS_EXPORT MFS_MUST_USE int64_t mfs_date_ls_date_to_time_t(const char *text);

MFS_END_DECLS

#endif
