// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/UserDefaults.h"
#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cmath>
#include <fstream>
#include <limits>
#include <vector>

#include <QCoreApplication>

#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using MWCore::UserDefaults;

/// Settings in a folder of the test's own, for organization "House" and application "Tool".
class Settings : public ::testing::Test {
protected:
    Settings() {
        QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope,
                           QString::fromStdString(folder_.path()));
        setNames("House", "Tool");
    }

    static void setNames(const char *organization, const char *application) {
        QCoreApplication::setOrganizationName(organization);
        QCoreApplication::setApplicationName(application);
    }

    /// Makes a change in another process, which shares no memory; whether it was written.
    static bool write(const std::function<void(UserDefaults &)> &change) {
        return runForked([&change] {
                   UserDefaults defaults;
                   change(defaults);
                   return static_cast<int>(defaults.synchronize());
               }) == QSettings::NoError;
    }

    [[nodiscard]] std::string file() const { return folder_.at("House/Tool.conf"); }

    TemporaryFolder folder_;
};

TEST_F(Settings, KeepAllKeysApart) {
    const char16_t carrier[] = {u'x', 0xDCFF};
    const char16_t null[] = {u'x', 0};
    const QStringList keys = {"plain",
                              "PLAIN",
                              "",
                              "%",
                              "%2F",
                              "/",
                              "a//b",
                              "a/b",
                              "a\\b",
                              "General/a",
                              "[General]",
                              "a=b",
                              "#a",
                              " a ",
                              "a\nb",
                              "1\\size",
                              "grün",
                              QString::fromUtf16(carrier, 2),
                              QString::fromUtf16(null, 2)};
    ASSERT_TRUE(write([&keys](UserDefaults &defaults) {
        for (int index = 0; index < keys.size(); ++index)
            defaults.setValue(keys[index], index);
        defaults.setValue("gone", 1);
        defaults.setValue("gone", {});
        defaults.setValue("a", 1); // must not replace "a/b"
        defaults.remove("a");
    }));
    const UserDefaults defaults;
    for (int index = 0; index < keys.size(); ++index)
        EXPECT_EQ(defaults.integer(keys[index], -1), index) << qPrintable(keys[index]);
    EXPECT_FALSE(defaults.contains("gone"));
    EXPECT_FALSE(defaults.contains("a"));
    const std::string groups = runProcess({"grep", "^\\[", file()}).output;
    EXPECT_EQ(groups, "[General]\n");
}

TEST_F(Settings, KeepEveryValueExactly) {
    const char16_t path[] = {u'/', 0xDCFF, u'"'};
    const char16_t null[] = {u'a', 0, u'b'};
    const QStringList texts = {"",
                               " blanks ",
                               "a, b",
                               "@ByteArray(x)",
                               "\\x41;#\"\n",
                               "日本語",
                               QString::fromUtf16(path, 3),
                               QString::fromUtf16(null, 3)};
    const double reals[] = {0.1, -1e300, std::numeric_limits<double>::denorm_min(), INFINITY};
    QByteArray bytes;
    for (int byte = 0; byte < 256; ++byte)
        bytes += static_cast<char>(byte);
    constexpr qint64 kSmallest = std::numeric_limits<qint64>::min();

    ASSERT_TRUE(write([&](UserDefaults &defaults) {
        for (const QString &text : texts)
            defaults.setValue("text " + text, text);
        for (const double real : reals)
            defaults.setValue(QString::number(real), real);
        defaults.setValue("bytes", bytes);
        defaults.setValue("no bytes", QByteArray(""));
        defaults.setValue("smallest", kSmallest);
        defaults.setValue("yes", true);
        defaults.setValue("no", false);
    }));
    const UserDefaults defaults;
    for (const QString &text : texts)
        EXPECT_EQ(defaults.text("text " + text, "none"), text) << qPrintable(text);
    for (const double real : reals)
        EXPECT_EQ(defaults.real(QString::number(real)), real);
    EXPECT_EQ(defaults.bytes("bytes"), bytes);
    EXPECT_EQ(defaults.bytes("no bytes", "none"), "");
    EXPECT_EQ(defaults.integer("smallest"), kSmallest);
    EXPECT_TRUE(defaults.boolean("yes"));
    EXPECT_FALSE(defaults.boolean("no", true));
}

TEST_F(Settings, ReturnTheDefaultForMissingOrUnreadableValues) {
    ASSERT_TRUE(write([](UserDefaults &defaults) { defaults.setValue("word", "many"); }));
    const UserDefaults defaults;
    for (const char *const key : {"missing", "word"}) {
        EXPECT_EQ(defaults.integer(key, 14), 14) << key;
        EXPECT_EQ(defaults.real(key, 1.5), 1.5) << key;
    }
    EXPECT_EQ(defaults.text("missing", "none"), "none");
    EXPECT_EQ(defaults.bytes("missing", "none"), "none");
    EXPECT_TRUE(defaults.boolean("missing", true));
}

TEST_F(Settings, AreStoredWithTheHostsOwn) {
    const struct Row {
        const char *what;
        const char *organization;
        const char *application;
        const char *file;
    } rows[] = {
        {"both names", "House", "Tool", "House/Tool.conf"},
        {"no organization", "", "Tool", "Tool.conf"},
        {"no application", "House", "", "House/platform_test.conf"},
        {"neither", "", "", "platform_test.conf"},
    };
    for (const Row &row : rows) {
        setNames(row.organization, row.application);
        EXPECT_TRUE(write([](UserDefaults &defaults) { defaults.setValue("key", 1); })) << row.what;
        const QSettings file(QString::fromStdString(folder_.at(row.file)), QSettings::IniFormat);
        EXPECT_EQ(file.value("key").toInt(), 1) << row.what;
    }
    setNames("House", "Tool");
    EXPECT_EQ(QSettings().value("key").toInt(), 1);
}

TEST_F(Settings, ReportAFileThatCannotBeWrittenOrRead) {
    ASSERT_EQ(chmod(folder_.path().c_str(), 0555), 0);
    const int statusForNobody = runAsNobody([] {
        UserDefaults defaults;
        defaults.setValue("key", 1);
        return static_cast<int>(defaults.synchronize());
    });
    ASSERT_EQ(chmod(folder_.path().c_str(), 0755), 0);
    EXPECT_EQ(statusForNobody, QSettings::AccessError);

    std::ofstream(folder_.folder("House") + "/Tool.conf") << "\x7F"
                                                             "ELF, and no settings\n";
    UserDefaults defaults;
    defaults.setValue("key", 1);
    EXPECT_EQ(defaults.synchronize(), QSettings::FormatError);
}

TEST_F(Settings, OfTheSuperuserAreNotStoredWhereAnotherUserCanReplaceThem) {
    if (geteuid() != 0)
        GTEST_SKIP() << "needs two users";
    const auto set = [](UserDefaults &defaults) { defaults.setValue("key", "value"); };
    EXPECT_TRUE(write(set));
    const std::string folder = folder_.at("House");
    ASSERT_EQ(chown(folder.c_str(), kNobody, kNobody), 0);
    EXPECT_FALSE(write([](UserDefaults &defaults) { defaults.setValue("key", "other"); }));
    EXPECT_EQ(UserDefaults().text("key", "none"), "none");
    ASSERT_EQ(chown(folder.c_str(), 0, 0), 0);
    EXPECT_EQ(UserDefaults().text("key"), "value");
}

TEST_F(Settings, OfSeveralProcessesAreMerged) {
    std::vector<pid_t> writers;
    for (int writer = 0; writer < 3; ++writer) {
        writers.push_back(fork());
        for (int round = 0; writers.back() == 0 && round < 4; ++round)
            UserDefaults().setValue(QString::number(writer * 4 + round), round);
        if (writers.back() == 0)
            _exit(0);
    }
    for (const pid_t writer : writers)
        waitpid(writer, nullptr, 0);
    const UserDefaults defaults;
    for (int key = 0; key < 12; ++key)
        EXPECT_EQ(defaults.integer(QString::number(key), -1), key % 4) << key;
}

TEST_F(Settings, AreKeptUntilTheyCanBeWritten) {
    EXPECT_EQ(runForked([] {
                  UserDefaults defaults;
                  defaults.setValue("other", 1);
                  EXPECT_EQ(defaults.synchronize(), QSettings::NoError);
                  constexpr rlimit kSmall = {70'000, RLIM_INFINITY};
                  constexpr rlimit kAny = {RLIM_INFINITY, RLIM_INFINITY};
                  setrlimit(RLIMIT_FSIZE, &kSmall);
                  defaults.setValue("key", QByteArray(100'000, 'v'));
                  EXPECT_EQ(defaults.synchronize(), QSettings::AccessError);
                  setrlimit(RLIMIT_FSIZE, &kAny);
                  EXPECT_EQ(defaults.synchronize(), QSettings::NoError);
                  return ::testing::Test::HasFailure() ? 1 : 0;
              }),
              0);
    EXPECT_EQ(UserDefaults().bytes("key").size(), 100'000);
}

} // namespace
