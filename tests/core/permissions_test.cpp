// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/mfs.h"
#include "tests/support/texts.h"

#include <gtest/gtest.h>

namespace {

mfs_perms flagsOf(int32_t number) {
    mfs_perms *const flags = mfs_permissions_octal_to_perms(number);
    const mfs_perms copy = *flags;
    std::free(flags);
    return copy;
}

uint32_t wordOf(const mfs_perms &flags) {
    uint32_t word = 0;
    std::memcpy(&word, &flags, sizeof word);
    return word;
}

TEST(Permissions, NumberIsReadFromTheLeft) {
    struct Row {
        const char *what;
        int32_t number;
        int mode;
        const char *text;
    };
    constexpr Row rows[] = {
        {"three digits", 755, 0755, "rwxr-xr-x"},
        {"two digits are group, others", 55, 0055, "---r-xr-x"},
        {"one digit is the owner", 7, 0700, "rwx"},
        {"zero", 0, 0, "---"},
        {"four digits: the first three", 4755, 0475, "r--rwxr-x"},
        {"a digit that is not octal", 48, 0040, "---r--"},
        {"only a digit that is not octal", 8, 0, ""},
        {"a middle digit that is not octal", 787, 0707, "rwxrwx"},
        {"a sign and one digit", -1, 0001, "-----x"},
        {"a sign and two digits", -75, 0075, "rwxr-x"},
        {"the longest number", INT32_MIN, 0021, "-w---x"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.what);
        EXPECT_EQ(mfs_permissions_octal_to_mode(row.number), row.mode);
        EXPECT_EQ(takeText(mfs_permissions_octal_to_string(row.number)), row.text);
    }
}

TEST(Permissions, EveryModeSurvivesConversionToNumberFlagsAndText) {
    for (uint32_t mode = 0; mode <= 0777; ++mode) {
        const int32_t number = mfs_get_perms_from_mode(mode);
        char octal[8];
        std::snprintf(octal, sizeof octal, "%o", mode);
        ASSERT_EQ(number, std::atoi(octal));
        if (mode < 010)
            continue; // a single digit is the owner's
        ASSERT_EQ(mfs_permissions_octal_to_mode(number), mode);
        const mfs_perms flags = flagsOf(number);
        ASSERT_EQ(mfs_permissions_perms_to_octal(&flags), number);
        const std::string listing = "-" + *takeText(mfs_permissions_octal_to_string(number));
        ASSERT_EQ(mfs_permissions_string_to_octal(listing.c_str()), number);
        for (int index = 0; index < 9; ++index)
            ASSERT_EQ(mfs_check_for_permission(index, &flags), (mode & 0400U >> index) != 0);
    }
}

TEST(Permissions, FlagsStartAtTheLowestBit) {
    mfs_perms flags{};
    flags.owner_read = 1;
    EXPECT_EQ(wordOf(flags), 1U);
    flags = {};
    flags.others_execute = 1;
    EXPECT_EQ(wordOf(flags), 1U << 8);
    EXPECT_EQ(mfs_permissions_perms_to_octal(&flags), 1);
    EXPECT_EQ(mfs_permissions_perms_to_octal(nullptr), 0);
}

TEST(Permissions, ToggleFlipsOneOfNineFlags) {
    mfs_perms flags = flagsOf(644);
    mfs_toggle_permission(4, &flags);
    EXPECT_EQ(mfs_permissions_perms_to_octal(&flags), 664);
    mfs_toggle_permission(4, &flags);
    for (const int32_t index : {9, 31, 32, 33, -1, INT32_MAX, INT32_MIN}) {
        mfs_toggle_permission(index, &flags);
        EXPECT_EQ(mfs_check_for_permission(index, &flags), 0) << index;
    }
    EXPECT_EQ(wordOf(flags), wordOf(flagsOf(644)));
}

TEST(Permissions, ListingTextNeedsTenCharactersAndCountsLetters) {
    struct Row {
        const char *text;
        int32_t number;
    };
    constexpr Row rows[] = {
        {"-rwxr-xr-x", 755}, {"-rw-r-----", 640},       {"rwxr-xr-x", -1},
        {"-rwsr-xr-x", 655}, {"drwxrwxrwt", 776},       {"-xwr------", 700},
        {"-rrrwwwxxx", 421}, {"-rwxr-xr-x+ more", 755}, {"", -1},
    };
    for (const Row &row : rows)
        EXPECT_EQ(mfs_permissions_string_to_octal(row.text), row.number) << row.text;
    EXPECT_EQ(mfs_permissions_string_to_octal(nullptr), -1);
}

TEST(Permissions, SpecialBitsAreSeparatedFromEveryMode) {
    for (uint32_t mode = 0; mode <= 07777; ++mode) {
        unsigned char sticky = 9;
        unsigned char setgid = 9;
        unsigned char setuid = 9;
        ASSERT_EQ(modetToPerms(0100000 | mode, &sticky, &setgid, &setuid),
                  mfs_get_perms_from_mode(mode));
        ASSERT_EQ(setuid * 04000 + setgid * 02000 + sticky * 01000 + (mode & 0777), mode);
    }
    EXPECT_EQ(modetToPerms(07007, nullptr, nullptr, nullptr), 7);
}

} // namespace
