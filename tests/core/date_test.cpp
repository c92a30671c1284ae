// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/DateTexts.h"
#include "tests/core/wrapped.h"
#include "tests/support/Process.h"
#include "tests/support/texts.h"

#include <gtest/gtest.h>

#include <ctime>
#include <sstream>

namespace {

/// Sets another time zone during its lifetime.
class TimeZone {
public:
    explicit TimeZone(const char *name) { change(name); }
    TimeZone(const TimeZone &) = delete;
    TimeZone &operator=(const TimeZone &) = delete;
    ~TimeZone() { change("UTC"); }

private:
    static void change(const char *name) {
        setenv("TZ", name, 1);
        tzset();
    }
};

/// A local time, in any form that date(1) accepts, as seconds since 1970.
int64_t secondsAt(const std::string &local) {
    return std::stoll(runProcess({"date", "-d", local, "+%s"}).output);
}

std::string localText(int64_t seconds) {
    std::string text = runProcess({"date", "-d", "@" + std::to_string(seconds), "+%F %T"}).output;
    text.pop_back();
    return text;
}

TEST(Date, TextIsRelativeOnlyWithinTheMonth) {
    const TimeZone zone("Europe/Berlin");
    struct Row {
        const char *now;
        const char *time;
        const char *text;
    };
    constexpr Row rows[] = {
        {"2008-06-15 12:00:00", "2008-06-15 00:00:00", "Today, 00:00:00"},
        {"2008-06-15 12:00:00", "2008-06-15 23:59:59", "Today, 23:59:59"},
        {"2008-06-15 12:00:00", "2008-06-14 09:00:00", "Yesterday, 09:00:00"},
        {"2008-06-15 12:00:00", "2008-06-16 00:00:00", "Mon, Jun 16, 2008, 00:00:00"},
        {"2008-06-15 12:00:00", "2008-06-13 23:59:59", "Fri, Jun 13, 2008, 23:59:59"},
        {"2008-06-15 12:00:00", "2007-06-15 12:00:00", "Fri, Jun 15, 2007, 12:00:00"},
        {"2008-06-15 12:00:00", "2008-03-04 17:45:12", "Tue, Mar 04, 2008, 17:45:12"},
        {"2008-06-01 00:00:00", "2008-05-31 23:59:59", "Sat, May 31, 2008, 23:59:59"},
        {"2008-06-02 00:00:00", "2008-06-01 23:59:59", "Yesterday, 23:59:59"},
        {"2008-01-01 08:00:00", "2007-12-31 08:00:00", "Mon, Dec 31, 2007, 08:00:00"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.time);
        WrappedLibc wrapped;
        wrapped.now = secondsAt(row.now);
        EXPECT_EQ(takeText(mfs_date_string_from_time_t(secondsAt(row.time))), row.text);
    }
}

/// Compares the texts of one listing, in which many days occur again, with date(1).
TEST(Date, TextsOfManyDaysAgreeWithDate) {
    for (const char *const name : {"Europe/Berlin", "America/St_Johns", "Asia/Kathmandu",
                                   "Pacific/Apia", "Australia/Lord_Howe", "UTC"}) {
        const TimeZone zone(name);
        WrappedLibc wrapped;
        wrapped.now = 4'000'000'000;
        std::vector<int64_t> times;
        for (int64_t step = 0; step < 3000; ++step) // 2011, in steps of three hours
            times.push_back(1'293'840'000 + step * 10'800 + step % 7 * 977);
        for (const int64_t time : {-1, 0, -86'400, -86'401, 86'399, -2'000'000'000})
            times.push_back(time);
        std::string dates;
        for (const int64_t time : times)
            dates += "@" + std::to_string(time) + "\n";
        std::istringstream expectedTexts(
            runProcess(
                {"sh", "-c", "printf %s \"$0\" | LC_ALL=C date -f - '+%a, %b %d, %Y, %T'", dates})
                .output);

        MWCore::DateTexts texts;
        for (const int64_t time : times) {
            std::string expected;
            ASSERT_TRUE(std::getline(expectedTexts, expected));
            ASSERT_EQ(texts.textFor(time).get(), expected) << name << " " << time;
        }
    }
}

TEST(Date, TimesBeyondTheCalendarAreNumbers) {
    EXPECT_EQ(takeText(mfs_date_string_from_time_t(INT64_MAX)), std::to_string(INT64_MAX));
    EXPECT_EQ(takeText(mfs_date_string_from_time_t(INT64_MIN)), std::to_string(INT64_MIN));
}

TEST(Date, ListingDatesAreReadAsLocalTime) {
    const TimeZone zone("America/New_York");
    WrappedLibc wrapped;
    wrapped.now = secondsAt("2008-06-15 12:00:00");
    struct Row {
        const char *listing;
        const char *local;
    };
    constexpr Row rows[] = {
        {"Mar  4 17:45", "2008-03-04 17:45:01"}, {"Dec 25 10:00", "2007-12-25 10:00:01"},
        {"Jun 30 23:59", "2008-06-30 23:59:01"}, {"Jul  1 00:00", "2007-07-01 00:00:01"},
        {"Jan 15  2005", "2005-01-15 00:00:01"}, {"Jun  3  1999", "1999-06-03 00:00:01"},
        {"Feb 29  2008", "2008-02-29 00:00:01"}, {"Apr 01 09:05", "2008-04-01 09:05:01"},
        {"May 10 12:34", "2008-05-10 12:34:01"}, {"Aug  9  2007", "2007-08-09 00:00:01"},
        {"Sep  9  2007", "2007-09-09 00:00:01"}, {"Oct 31  2007", "2007-10-31 00:00:01"},
        {"Nov 11  2007", "2007-11-11 00:00:01"}, {"Xul 11  2007", "2007-07-11 00:00:01"},
        {"Xun 11  2007", "2007-06-11 00:00:01"}, {"Xyz 11  2007", "2007-01-11 00:00:01"},
        {"Feb 30  2007", "2007-03-02 00:00:01"}, {"Jan  1 25:61", "2008-01-02 02:01:01"},
    };
    for (const Row &row : rows)
        EXPECT_EQ(localText(mfs_date_ls_date_to_time_t(row.listing)), row.local) << row.listing;
}

TEST(Date, TheTimeZoneIsReadAtEachCall) {
    const TimeZone zone("UTC");
    WrappedLibc wrapped;
    wrapped.now = secondsAt("2008-06-30 22:00:00");
    EXPECT_EQ(mfs_date_ls_date_to_time_t("Jul  1 10:00"), secondsAt("2007-07-01 10:00:01"));
    setenv("TZ", "Pacific/Kiritimati", 1); // where it is already July
    EXPECT_EQ(mfs_date_ls_date_to_time_t("Jul  1 10:00"), secondsAt("2008-07-01 10:00:01"));
    EXPECT_EQ(takeText(mfs_date_string_from_time_t(*wrapped.now)), "Today, 12:00:00");
}

TEST(Date, AnInvalidListingDateGivesMinusOne) {
    for (const char *const text :
         {"", "Mar", "Mar  4", "Mar  4 ", "Mar  4 1", "Mar  4  year", "Mar  4 xx:yy",
          "Mar  4 12:", "Mar  4  99999999999999999999", "Mar  4  2147483648"})
        EXPECT_EQ(mfs_date_ls_date_to_time_t(text), -1) << text;
    EXPECT_EQ(mfs_date_ls_date_to_time_t(nullptr), -1);
}

} // namespace
