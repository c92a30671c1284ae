// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/DateTexts.h"

#include <cstdio>
#include <limits>

namespace MWCore {
namespace {

constexpr int64_t kSecondsPerDay = 86'400;
constexpr const char *kLabel = "mfs_date_string_from_time_t";

/// Formats for strftime(), without and with the time of day.
struct Format {
    const char *day;
    const char *whole;
};
constexpr Format kToday = {"Today, ", "Today, %T"};
constexpr Format kYesterday = {"Yesterday, ", "Yesterday, %T"};
constexpr Format kAnyDay = {"%a, %b %d, %Y, ", "%a, %b %d, %Y, %T"};

const Format &formatFor(const std::tm &item, const std::tm &now) {
    if (item.tm_year == now.tm_year && item.tm_mon == now.tm_mon) {
        if (item.tm_mday == now.tm_mday - 1)
            return kYesterday;
        if (item.tm_mday == now.tm_mday)
            return kToday;
    }
    return kAnyDay;
}

/// Converts to local calendar fields; false if the system cannot represent them.
[[nodiscard]] bool localFields(int64_t seconds, std::tm &fields) {
    if (seconds > std::numeric_limits<std::time_t>::max() ||
        seconds < std::numeric_limits<std::time_t>::min())
        return false;
    const auto time = static_cast<std::time_t>(seconds);
    constexpr int kFirstYear = 1900; // tm_year counts from it; strftime() writes the sum as an int
    return localtime_r(&time, &fields) &&
           fields.tm_year <= std::numeric_limits<int>::max() - kFirstYear;
}

int64_t secondsOfDay(const std::tm &fields) {
    return fields.tm_hour * 3600 + fields.tm_min * 60 + fields.tm_sec;
}

bool isSameDay(const std::tm &one, const std::tm &other) {
    return one.tm_yday == other.tm_yday && one.tm_year == other.tm_year;
}

int64_t dayInUtc(int64_t seconds) {
    return seconds / kSecondsPerDay - (seconds % kSecondsPerDay < 0 ? 1 : 0);
}

/// Appends the time of day in the format of "%T".
Text withClock(std::string_view prefix, int64_t second) {
    const auto digits = [](int64_t value, char *to) {
        to[0] = static_cast<char>('0' + value / 10);
        to[1] = static_cast<char>('0' + value % 10);
    };
    char clock[] = "00:00:00";
    digits(second / 3600, clock);
    digits(second / 60 % 60, clock + 3);
    digits(second % 60, clock + 6);
    return joined({prefix, clock}, kLabel);
}

Text secondsAsText(int64_t seconds) {
    char text[24];
    std::snprintf(text, sizeof text, "%lld", static_cast<long long>(seconds));
    return copied(text, kLabel);
}

} // namespace

DateTexts::DateTexts() {
    tzset();
    if (!localFields(std::time(nullptr), now_))
        now_ = {}; // then no day is "Today" or "Yesterday"
}

Text DateTexts::textFor(int64_t seconds) {
    if (const Day *const day = cachedDay(seconds))
        return withClock(day->prefix, seconds - day->first);
    std::tm fields;
    if (!localFields(seconds, fields))
        return secondsAsText(seconds);
    cacheDay(seconds, fields);
    char text[256] = {};
    std::strftime(text, sizeof text, formatFor(fields, now_).whole, &fields);
    return copied(text, kLabel);
}

const DateTexts::Day *DateTexts::cachedDay(int64_t seconds) const {
    const int64_t utcDay = dayInUtc(seconds);
    for (const int64_t key : {utcDay * 2, utcDay * 2 + 1}) {
        const Day *const day = days_.find(key);
        if (day && seconds >= day->first && seconds - day->first < kSecondsPerDay)
            return day;
    }
    return nullptr;
}

void DateTexts::cacheDay(int64_t seconds, const std::tm &fields) {
    Day day;
    day.first = seconds - secondsOfDay(fields);
    const int64_t last = day.first + kSecondsPerDay - 1;
    std::tm start;
    std::tm end;
    const bool clockIsUnchanged = localFields(day.first, start) && secondsOfDay(start) == 0 &&
                                  isSameDay(start, fields) && localFields(last, end) &&
                                  secondsOfDay(end) == kSecondsPerDay - 1 && isSameDay(end, fields);
    if (!clockIsUnchanged)
        return;
    if (std::strftime(day.prefix, sizeof day.prefix, formatFor(fields, now_).day, &fields) == 0)
        return; // too long in this locale: its times are formatted in full
    for (int64_t utcDay = dayInUtc(day.first); utcDay <= dayInUtc(last); ++utcDay)
        days_.remember(day.first <= utcDay * kSecondsPerDay ? utcDay * 2 : utcDay * 2 + 1, day);
}

} // namespace MWCore
