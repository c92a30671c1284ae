// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/foundation/ShortMemo.h"
#include "platform/launch/ItemMimeType.h"
#include "platform/launch/MimeTypesByName.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <iostream>
#include <random>
#include <string>

#include <QByteArray>
#include <QMimeDatabase>
#include <QRegularExpression>
#include <QString>
#include <QStringList>

namespace {

using namespace MWCore;

/// Names that a pattern matches, and similar ones.
QStringList namesLike(QString pattern) {
    static const QRegularExpression set(QStringLiteral(R"(\[([^\]]).*?\])"));
    pattern.replace(set, QStringLiteral("\\1")).replace(u'?', u'x');
    QStringList names;
    for (const char *const stem : {"", "a", ".", "README", "core", "Ünï.tar", "x.so.1", "1.2 3~"}) {
        const QString name = QString(pattern).replace(u'*', QString::fromUtf8(stem));
        names += {name, name.toUpper(), name.chopped(1), name + u'1', u'.' + name};
    }
    return names;
}

constexpr const char *kNastyNames[] = {
    "",           ".",         "..",          ".png",         "..png",       "a..png",   "png",
    "a.",         "a. ",       "a .png",      "a.C",          "a.c",         "a.H.c",    "a.PnG",
    "readme.png", "readme",    "READMe.x",    "makefile.am",  "a.12",        "a.1",      "a.1.png",
    "core.png",   "Core",      "x.so.6",      "x.so.y",       "a.png~",      "~",        "%",
    "a,v",        ",v",        "a\nb.png",    ":a.png",       "a.\xC2\xB5",  "a.tar.GZ", "tar.gz",
    ".tar.gz",    "a.b.c.d.e", "core.tar.gz", "\xE2\x84\xAA", "a.b.tar.lzma"};

QStringList trickyNames() {
    QStringList names;
    for (const char *const name : kNastyNames)
        names += QString::fromUtf8(name);
    for (const QMimeType &type : QMimeDatabase().allMimeTypes())
        for (const QString &pattern : type.globPatterns())
            names += namesLike(pattern);
    std::ranges::shuffle(names, std::mt19937(1)); // which name is the first of its suffix counts
    return names;
}

/// Compares the answers with those of Qt; ends the process.
[[noreturn]] void exitAfterComparing(const QStringList &names) {
    const auto isWrong = [](const QString &name) {
        QStringList expected;
        for (const QMimeType &type : QMimeDatabase().mimeTypesForFileName(name))
            expected += type.name();
        return mimeTypesByName(name) != expected;
    };
    const auto wrong = std::ranges::find_if(names, isWrong);
    if (wrong != names.end())
        std::cerr << "wrong for '" << wrong->toStdString() << "'\n";
    std::exit(names.size() > 20 && wrong == names.end() ? 0 : 1);
}

TEST(MimeTypesByName, AreThoseOfTheDatabaseForEveryPattern) {
    const auto succeeds = testing::ExitedWithCode(0);
    EXPECT_EXIT(exitAfterComparing(trickyNames()), succeeds, "");
}

constexpr const char *kUsersTypes = R"(<?xml version="1.0" encoding="UTF-8"?>
<mime-info xmlns="http://www.freedesktop.org/standards/shared-mime-info">
  <mime-type type="x-test/photo"><glob pattern="photo*" weight="80"/></mime-type>
  <mime-type type="x-test/part"><glob pattern="*.one.two.three.four.five"/></mime-type>
  <mime-type type="x-test/part"><glob pattern="*-[0-9].txt"/></mime-type>
  <mime-type type="x-test/shout"><glob pattern="*.TXT" case-sensitive="true" weight="90"/></mime-type>
</mime-info>)";

/// What a user adds to the database, before and after update-mime-database has read it.
TEST(MimeTypesByName, AreThoseOfAUsersDatabase) {
    const TemporaryFolder folder;
    const auto names = [] {
        QStringList all;
        for (const char *const stem : {"a", "photo", "PHOTO", "a-1", "a-x"})
            for (const char *const suffix :
                 {"", ".txt", ".TXT", ".one.two.three.four.five", ".five", ".two.three.four.five"})
                all += QString::fromLatin1(stem) + QString::fromLatin1(suffix);
        return all;
    };
    (void)folder.write("mime/packages/test.xml", kUsersTypes);
    setenv("XDG_DATA_HOME", folder.path().c_str(), 1);
    GTEST_FLAG_SET(death_test_style, "fast"); // the database has not been used in this process
    const auto succeeds = testing::ExitedWithCode(0);
    EXPECT_EXIT(exitAfterComparing(names()), succeeds, "") << "not read yet";
    ASSERT_EQ(std::system(("update-mime-database " + folder.at("mime")).c_str()), 0);
    EXPECT_EXIT(exitAfterComparing(names()), succeeds, "");
    (void)unsetenv("XDG_DATA_HOME");
}

TEST(ItemMimeType, IsThatOfQtForTheSameFile) {
    const TemporaryFolder folder;
    const std::string contents[] = {
        "", "text\n", "#!/bin/sh\n", "\x89PNG\r\n\x1a\n", "%PDF-1.4\n", {"\0\1\2\xFF", 4}};
    int files = 0;
    for (const char *const suffix : {"", ".png", ".unknown", ".ts", ".doc", "~", ".xml"})
        for (const std::string &content : contents) {
            const std::string path = folder.write(std::to_string(++files) + suffix, content);
            EXPECT_EQ(mimeTypeOfFile(QByteArray::fromStdString(path)),
                      QMimeDatabase().mimeTypeForFile(QString::fromStdString(path)).name())
                << suffix << ": " << content;
        }
}

/// A clock that a test sets.
struct TestClock {
    using duration = std::chrono::seconds;
    using rep = duration::rep;
    using period = duration::period;
    using time_point = std::chrono::time_point<TestClock>;
    static inline time_point time;
    static time_point now() { return time; }
};

TEST(ShortMemo, ForgetsAfterAWhileAndWhenItIsFull) {
    ShortMemo<int, int, TestClock> memo;
    int computed = 0;
    const auto compute = [&computed] { return ++computed; };
    EXPECT_EQ(memo.value(7, compute), 1);
    TestClock::time += memo.kLifetime;
    EXPECT_EQ(memo.value(7, compute), 1);
    EXPECT_EQ(memo.value(8, compute), 2);
    TestClock::time += std::chrono::seconds(1);
    EXPECT_EQ(memo.value(8, compute), 3) << "it goes with the older one";
    for (int key = 0; key < memo.kMost; ++key)
        (void)memo.value(100 + key, compute);
    const int before = computed;
    (void)memo.value(8, compute);
    EXPECT_EQ(computed, before + 1);
}

} // namespace
