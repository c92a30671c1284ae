// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/support/texts.h"

#include <gtest/gtest.h>

namespace {

TEST(Path, SplitsAtTheLastSlash) {
    struct Row {
        const char *path;
        const char *last;
        const char *without;
        const char *experimental;
        const char *parent;
    };
    constexpr Row rows[] = {
        {"/a/b", "b", "/a", "/a", "/a"},
        {"/a/b/", "", "/a/b", "/a/b", "/a"},
        {"/a/b/c", "c", "/a/b", "/a/b", "/a/b"},
        {"/a", "a", "", "/", "/"},
        {"/a/", "", "/a", "/a", "/"},
        {"/", "", "/", "/", "/"},
        {"//", "", "/", "/", "/"},
        {"a/b", "b", "a", "a", "a"},
        {"a/", "", "a", "a", ""},
        {"name", "name", "", "", ""},
        {"", "", "", "", ""},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.path);
        EXPECT_EQ(takeText(mfs_path_last_component(row.path)), row.last);
        EXPECT_EQ(takeText(mfs_path_without_last_component(row.path)), row.without);
        EXPECT_EQ(takeText(experimental_mfs_path_without_last_component(row.path)),
                  row.experimental);
        EXPECT_EQ(takeText(mfs_parent_of_path(row.path)), row.parent);
    }
}

TEST(Path, OnlyTheRootGivesTheSharedText) {
    EXPECT_EQ(mfs_path_without_last_component("/"), mfs_path_root);
    EXPECT_EQ(mfs_parent_of_path("/"), mfs_path_root);
    for (char *const text :
         {experimental_mfs_path_without_last_component("/"), mfs_parent_of_path("/a")}) {
        EXPECT_STREQ(text, "/");
        EXPECT_NE(text, mfs_path_root);
        std::free(text);
    }
}

TEST(Path, JoinsWithOneSlash) {
    EXPECT_EQ(takeText(mfs_path_by_appending_item("/", "x")), "/x");
    EXPECT_EQ(takeText(mfs_path_by_appending_item("/a", "x")), "/a/x");
    EXPECT_EQ(takeText(mfs_path_by_appending_item("/a/", "x")), "/a/x");
    EXPECT_EQ(takeText(mfs_path_by_appending_item("", "x")), "/x");
}

TEST(Path, AbsoluteBeginsWithASlash) {
    EXPECT_EQ(mfs_path_is_absolute("/a"), 1);
    EXPECT_EQ(mfs_path_is_absolute("a/"), 0);
    EXPECT_EQ(mfs_path_is_absolute(""), 0);
    EXPECT_EQ(mfs_path_is_absolute(nullptr), 0);
}

} // namespace
