// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#ifndef MFS_DATE_H
#define MFS_DATE_H

#include "mfs_export.h"

#include <stdint.h>

MFS_BEGIN_DECLS

/// Times are seconds since 1970-01-01 00:00:00 UTC in 64 bits, whatever the width of the
/// processor's time_t. Texts use the process's time zone and locale.

/// The time as a fresh text: "Today, 14:05:09", "Yesterday, 09:00:00" or "Tue, Mar 04, 2008,
/// 17:45:12". Any time on today's date is today, a future one too. Yesterday is today's day of the
/// month minus one in the same month, so that on the first of a month there is none. A time too far
/// away for the calendar is given as its number of seconds.
MFS_EXPORT MFS_MUST_USE char *mfs_date_string_from_time_t(int64_t seconds);

/// Reads the date column of a long listing, "Mmm dd hh:mm" or "Mmm dd  yyyy" in English, as local
/// time. Without a year it is the latest year in which that month is not yet to come. The second is
/// always 1. Month names are told apart by a few letters only, digits are not validated. Returns -1
/// when the text is too short, has no number where one is needed, or names no time. @p text is not
/// changed.
MFS_EXPORT MFS_MUST_USE int64_t mfs_date_ls_date_to_time_t(const char *text);

MFS_END_DECLS

#endif
