// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/text/Insert.h"

#include <gtest/gtest.h>

#include <string>

namespace {

namespace Insert = MWCore::Insert;
using List = QList<char>;

List listOf(const std::string &letters) {
    return {letters.begin(), letters.end()};
}

std::string lettersOf(const List &list) {
    return {list.begin(), list.end()};
}

TEST(Insert, MovesOrInsertsAnElement) {
    const auto move = [](List &list, int32_t index) { Insert::moveItem(list, 'a', index); };
    const auto keep = [](List &list, int32_t index) {
        constexpr bool kNoRemoval = true;
        Insert::moveItem(list, 'a', index, kNoRemoval);
    };
    const auto add = [](List &list, int32_t index) { Insert::addObject(list, 'a', index); };
    const struct Row {
        const char *what;
        void (*change)(List &, int32_t);
        const char *before;
        int32_t index;
        const char *after;
    } rows[] = {
        {"forwards makes up for the entry that went", move, "abc", 2, "bac"},
        {"backwards", move, "bca", 0, "abc"},
        {"to where it is", move, "bac", 1, "bac"},
        {"the length means the end", move, "abc", 3, "bca"},
        {"so does a negative index", move, "abc", -1, "bca"},
        {"every equal entry goes", move, "aba", 0, "ab"},
        {"and none is left at the end", move, "aba", 7, "ba"},
        {"more entries go than lie behind the position", move, "aaab", 3, "ba"},
        {"a new one", move, "bc", 1, "bac"},
        {"a new one at the end", move, "bc", 2, "bca"},
        {"an additional entry", keep, "ab", 1, "aab"},
        {"additional at the end", keep, "ab", -5, "aba"},
        {"into an empty list", move, "", 0, "a"},
        {"added at the front", add, "bc", 0, "abc"},
        {"added with a negative index stays at the end", add, "bc", -1, "bca"},
        {"adding makes up for an earlier equal too", add, "abc", 2, "bac"},
    };
    for (const Row &row : rows) {
        List list = listOf(row.before);
        row.change(list, row.index);
        EXPECT_EQ(lettersOf(list), row.after) << row.what;
    }
}

TEST(Insert, AcceptsAReferenceIntoTheList) {
    QList<QString> list = {"one", "two", "three"};
    Insert::moveItem(list, list[0], 2);
    EXPECT_EQ(list, (QList<QString>{"two", "one", "three"}));
    Insert::addObject(list, list[2], 0);
    EXPECT_EQ(list, (QList<QString>{"three", "two", "one"}));
}

} // namespace
