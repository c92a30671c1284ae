// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/mfs_date.h"

#include "core/DateTexts.h"

#include <climits>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <optional>

namespace {

/// The month (0 = January), recognised by a few letters of its English abbreviation.
int monthFrom(const char *name) {
    switch (name[0]) {
    case 'M':
        return name[2] == 'r' ? 2 : 4;
    case 'N':
        return 10;
    case 'O':
        return 9;
    case 'S':
        return 8;
    case 'A':
        return name[1] == 'u' ? 7 : 3;
    case 'D':
        return 11;
    case 'F':
        return 1;
    default:
        if (name[1] != 'u')
            return 0;
        return name[2] == 'l' ? 6 : 5;
    }
}

/// Two digits, not validated; a leading blank counts as 0.
int dayFrom(const char *digits) {
    const int tens = digits[0] == ' ' ? 0 : digits[0] - '0';
    return tens * 10 + digits[1] - '0';
}

std::optional<int> numberFrom(const char *text) {
    char *end;
    const long long number = std::strtoll(text, &end, 10);
    if (end == text || number < INT_MIN || number > INT_MAX)
        return std::nullopt;
    return static_cast<int>(number);
}

} // namespace

char *mfs_date_string_from_time_t(int64_t seconds) {
    return MWCore::DateTexts().textFor(seconds).release();
}

int64_t mfs_date_ls_date_to_time_t(const char *text) {
    constexpr std::size_t kMonth = 0; // positions in "Mmm dd hh:mm" and "Mmm dd  yyyy"
    constexpr std::size_t kDay = 4;
    constexpr std::size_t kHourOrYear = 7;
    constexpr std::size_t kColon = 9;
    constexpr int kFirstYear = 1900; // of tm_year

    const std::size_t length = text ? std::strlen(text) : 0;
    if (length <= kHourOrYear)
        return -1;
    tzset(); // as mktime() does, so that both use the same time zone
    std::tm fields{};
    const std::time_t now = std::time(nullptr);
    if (!localtime_r(&now, &fields))
        return -1;

    const int month = monthFrom(text + kMonth);
    if (text[kHourOrYear] == ' ') {
        const auto year = numberFrom(text + kHourOrYear);
        if (!year || *year < INT_MIN + kFirstYear)
            return -1;
        fields.tm_year = *year - kFirstYear;
        fields.tm_hour = 0;
        fields.tm_min = 0;
    } else {
        if (length <= kColon)
            return -1;
        const char hourDigits[] = {text[kHourOrYear], text[kHourOrYear + 1], '\0'};
        const auto hour = numberFrom(hourDigits);
        const auto minute = numberFrom(text + kColon + 1);
        if (!hour || !minute)
            return -1;
        if (fields.tm_mon < month)
            --fields.tm_year;
        fields.tm_hour = *hour;
        fields.tm_min = *minute;
    }
    fields.tm_sec = 1;
    fields.tm_mon = month;
    fields.tm_mday = dayFrom(text + kDay);
    fields.tm_wday = 0;
    fields.tm_yday = 0;
    fields.tm_isdst = -1;
    return std::mktime(&fields);
}
