// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/text/Regex.h"

#include <gtest/gtest.h>

#include <QString>

namespace {

namespace Regex = MWCore::Regex;

const char16_t kByteCarrier[] = {u'a', 0xDCFF, 0};

TEST(Regex, MatchesAnywhereIgnoringCase) {
    const struct {
        QString text;
        QString pattern;
        bool matches;
    } rows[] = {
        {"xabcx", "ABC", true},
        {"xabcx", "^abc", false},
        {"ab", "^(a|c)b{1}$", true},
        {"a\nb", "^b", false}, // "^" matches only the start of the text
        {"a\nb", "a.b", true},
        {"", "", true},
        {"", "a", false},
        {"\xC3\x84RGER", "\xC3\xA4rger", true},
        {"\xC3\xA4", "^.$", true},
        {"\xF0\x9F\x98\x80", "^.$", true},
        {QString::fromUtf16(kByteCarrier), "^a", true},
        {"abc", "a(", false},
        {"abc", "[", false},
        {"abc", "a{2,1}", false},
        {QString(5000, u'('), QString(5000, u'('), false},
        {"a", QString(200, u'(') + 'a' + QString(200, u')'), true},
        // the C library crashes on these or takes minutes and gigabytes
        {"", "()\\1*()\\2(\\1|\\2)*", false},
        {"a", "(((a{1,255}){1,255}){1,255})", false},
        {"a", QString(24, u'(') + 'a' + QString("+)").repeated(24), false},
        {"a", "a??{0,3}{0,3}{2}?{1,}", false},
        {"a1\\", "([a[:digit:]]{1,20})+[]\\1]{1}$", true},
    };
    for (const auto &row : rows)
        EXPECT_EQ(Regex::matchesRegex(row.text, row.pattern), row.matches)
            << row.text.toStdString() << " " << row.pattern.left(20).toStdString();
    EXPECT_EQ(setlocale(LC_CTYPE, nullptr), std::string("C")) << "the host's locale stays";
}

TEST(Regex, EscapesOnlyAfterALeadingSpecialCharacter) {
    const struct {
        const char *text;
        const char *escaped;
    } rows[] = {
        {"a.b", "a.b"},
        {".a*", "\\.a\\*"},
        {" \n.b", " \n\\.b"},
        {"  ", "  "},
        {"", ""},
        {"\\.", "\\\\\\."},
        {"(^$[|+?{)]}-", "\\(\\^\\$\\[\\|\\+\\?\\{\\)]}-"},
        {"]a.", "]a."},
    };
    for (const auto &row : rows) {
        const QString escaped = Regex::_escapeString(row.text);
        EXPECT_EQ(escaped, row.escaped);
        if (escaped != row.text) {
            EXPECT_TRUE(Regex::matchesRegex(row.text, '^' + escaped + '$')) << row.text;
        }
    }
    EXPECT_EQ(Regex::_escapeString("a-b-", "-"), "a\\-b\\-");
    EXPECT_EQ(Regex::_escapeString("abab", "ab"), "abab") << "one character at a time";
    EXPECT_EQ(Regex::arrayValue("a\xF0\x9F\x98\x80").size(), 3);
}

TEST(Regex, HidesDotNamesAndSystemNames) {
    for (const char *const name : {".profile", "bin", "Temporary Items", "Volumes", "usr", "."})
        EXPECT_TRUE(Regex::isHidden(name)) << name;
    for (const char *const name : {"Bin", "binaries", "Temporary", "a.b", "", "bin "})
        EXPECT_FALSE(Regex::isHidden(name)) << name;
}

} // namespace
