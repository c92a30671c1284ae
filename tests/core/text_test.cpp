// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/support/texts.h"

#include <gtest/gtest.h>

namespace {

TEST(Text, BlanksAreCountedAndTrimmed) {
    struct Row {
        const char *text;
        int front;
        int back;
        const char *despaced;
    };
    constexpr Row rows[] = {
        {"", 0, 0, ""},           {"name", 0, 0, "name"},  {"  a b ", 2, 1, "a b"},
        {"\ta\t", 0, 0, "\ta\t"}, {" x \r\n ", 1, 4, "x"}, {"\r\nx", 0, 0, "\r\nx"},
        {"   ", 3, 3, ""},        {" \n ", 1, 3, ""},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(mfs_utility_front_spaces(row.text), row.front);
        EXPECT_EQ(mfs_string_back_spaces(row.text), row.back);
        EXPECT_EQ(takeText(mfs_utility_despace_string(row.text)), row.despaced);
    }
    EXPECT_EQ(mfs_string_back_spaces(nullptr), 0);
}

TEST(Text, ExtensionFollowsTheLastDotUnlessItIsLeading) {
    struct Row {
        const char *name;
        std::optional<std::string> extension;
    };
    const Row rows[] = {
        {"archive.tar.gz", "gz"},
        {"a.b", "b"},
        {".profile", std::nullopt},
        {"file.", ""},
        {"photo.jpg  ", "jpg"},
        {"README", std::nullopt},
        {"", std::nullopt},
        {".", std::nullopt},
        {"..", ""},
        {".a.b", "b"},
        {"x.\r\n", ""},
        {"   ", std::nullopt},
        {"a.b c", "b c"},
        {". ", std::nullopt},
    };
    for (const Row &row : rows)
        EXPECT_EQ(takeText(mfs_string_get_extension(row.name)), row.extension) << row.name;
    EXPECT_EQ(mfs_string_get_extension(nullptr), nullptr);
}

TEST(Text, ExtensionOfKnownLengthIsCopiedOnlyAfterADot) {
    struct Row {
        const char *name;
        int length;
        const char *copied; ///< null if nothing must be written
    };
    constexpr Row rows[] = {
        {"photo.jpg \n", 4, "jpg"}, {"photo.jpg", 3, nullptr}, {".profile", 8, "profile"},
        {"file.", 1, ""},           {"a.b", 0, nullptr},       {"a.b", 4, nullptr},
        {"a.b", -1, nullptr},       {"", 1, nullptr},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        char buffer[] = "untouched";
        char *out = buffer;
        EXPECT_EQ(mfs_string_get_extension_with_known_length(row.name, &out, row.length),
                  row.copied ? 1 : 0);
        EXPECT_STREQ(buffer, row.copied ? row.copied : "untouched");
    }
}

TEST(Text, SizeUnitsHaveUnevenThresholds) {
    struct Row {
        int64_t bytes;
        const char *text;
    };
    constexpr Row rows[] = {
        {0, "0 "},
        {512, "512 "},
        {1'023, "1023 "},
        {1'024, "1 k"},
        {1'536, "1 k"},
        {1'023'999, "999 k"},
        {1'024'000, "1 MB"},
        {5'000'000, "4 MB"},
        {1'023'999'999, "999 MB"},
        {1'024'000'000, "1 GB"},
        {INT64_MAX, "417264662 GB"}, // 9,007,199,254 narrowed to 32 bits
        {-1, "-1 "},
        {-5'000'000'000, "-705032704 "},
    };
    for (const Row &row : rows)
        EXPECT_EQ(takeText(mfs_utility_format_size(row.bytes)), row.text) << row.bytes;
}

} // namespace
