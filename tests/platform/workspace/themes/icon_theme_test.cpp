// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/themes/IconTheme.h"

#include "platform/workspace/themes/CurrentTheme.h"
#include "tests/support/MountedFolder.h"
#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/UnresponsiveMount.h"

#include <MWCore/MXNotificationCenter.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <thread>

namespace {

namespace fs = std::filesystem;
using MWCore::CurrentTheme;
using MWCore::IconTheme;

/// Base folders of a test's own. Files and themes are named by their paths in it.
class Themes : public ::testing::Test {
protected:
    void theme(const std::string &path, const std::string &index) const {
        (void)folder_.write(path + "/index.theme", "[Icon Theme]\n" + index);
    }

    void files(std::initializer_list<const char *> paths) const {
        for (const char *const path : paths)
            (void)folder_.write(path, "");
    }

    [[nodiscard]] std::vector<QByteArray> bases() const {
        return {base("user"), base("system"), base("pixmaps")};
    }

    /// The path of what is found, in the test's folder; "-" for nothing.
    [[nodiscard]] std::string find(const IconTheme &theme, const QStringList &icons, int size,
                                   int scale = 1) const {
        const auto found = theme.find(icons, size, scale);
        return found ? fs::path(found->toStdString()).lexically_relative(folder_.path()).string()
                     : "-";
    }

    [[nodiscard]] std::string findIn(const char *theme, const QStringList &icons, int size = 16,
                                     int scale = 1) const {
        return find(IconTheme(theme, bases()), icons, size, scale);
    }

    [[nodiscard]] QByteArray base(const char *name) const { return folder_.at(name).c_str(); }

    TemporaryFolder folder_;
};

const std::string k16 = "[16]\nSize=16\nType=Fixed\n";

TEST_F(Themes, AreSearchedByTheSizesOfTheirFolders) {
    theme("system/T", "Directories=f16,f32, s ,t48\nScaledDirectories=f16@2,missing\n"
                      "[f16]\nSize=16\nType=Fixed\n[f32]\nSize=32\nType=Fixed\n"
                      "[s]\nSize=100\nMinSize=64\nMaxSize=256\nType=Scalable\n"
                      "[t48]\nSize=48\n[f16@2]\nSize=16\nScale=2\nType=Fixed\n");
    files({"system/T/f16/a.png", "system/T/f32/a.png", "system/T/s/a.svg", "system/T/t48/a.png",
           "system/T/f16@2/a.png", "system/T/f32/b.svg", "system/T/f32/b.png", "user/T/f32/b.xpm",
           "system/T/unlisted/c.png"});
    const struct {
        const char *icon;
        int size;
        int scale;
        const char *found;
    } rows[] = {
        {"a", 16, 1, "f16/a.png"}, {"a", 16, 2, "f16@2/a.png"},
        {"a", 64, 1, "s/a.svg"},   {"a", 256, 1, "s/a.svg"},
        {"a", 46, 1, "t48/a.png"}, {"a", 50, 1, "t48/a.png"},
        {"a", 45, 1, "t48/a.png"}, {"a", 1, 1, "f16/a.png"},
        {"a", 24, 1, "f32/a.png"}, // as far from 16
        {"a", 25, 1, "f32/a.png"}, {"a", 9999, 1, "s/a.svg"},
        {"a", 32, 2, "s/a.svg"},   {"a", 32, 1, "f32/a.png"},
        {"a", 17, 2, "f32/a.png"}, {"a", 57, 1, "s/a.svg"},
        {"c", 16, 1, nullptr},
    };
    const IconTheme theme("T", bases());
    for (const auto &row : rows)
        EXPECT_EQ(find(theme, {row.icon}, row.size, row.scale),
                  row.found ? std::string("system/T/") + row.found : "-")
            << row.icon << " " << row.size << "@" << row.scale;
    EXPECT_EQ(find(theme, {"b"}, 32), "user/T/f32/b.xpm") << "base folders come before extensions";
    fs::remove(folder_.at("user/T/f32/b.xpm"));
    EXPECT_EQ(findIn("T", {"b"}, 32), "system/T/f32/b.png");
}

TEST_F(Themes, InheritFromOneAnother) {
    theme("user/A", "Inherits=B,hicolor,,A,C\nDirectories=16\n" + k16);
    theme("system/B", "Inherits=A,D\nDirectories=16\n" + k16);
    theme("system/C", "Directories=16\n" + k16);
    theme("system/D", "Inherits=../system/C\nDirectories=16\n" + k16);
    theme("system/hicolor", "Inherits=A\nDirectories=16\n" + k16);
    files({"user/A/16/a.png", "system/B/16/b.png", "system/C/16/c.png", "system/D/16/d.png",
           "system/hicolor/16/c.png", "system/hicolor/16/h.png", "user/h.png", "pixmaps/u.svg",
           "system/B/16/a.png", "system/C/16/d.png", "system/C/16/special.png"});
    const struct {
        QStringList icons;
        const char *found;
    } rows[] = {
        {{"a"}, "user/A/16/a.png"},
        {{"b"}, "system/B/16/b.png"},
        {{"c"}, "system/C/16/c.png"},
        {{"d"}, "system/D/16/d.png"},
        {{"h"}, "system/hicolor/16/h.png"},
        {{"u"}, "pixmaps/u.svg"},
        {{"special", "missing", "a"}, "user/A/16/a.png"}, // another theme's would not match
        {{"missing", "u", "c"}, "system/C/16/c.png"},
        {{"missing"}, "-"},
        {{}, "-"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(findIn("A", row.icons), row.found) << qPrintable(row.icons.join(' '));
    EXPECT_EQ(findIn("not installed", {"a", "h"}), "system/hicolor/16/h.png");
    EXPECT_EQ(findIn("../user/A", {"a", "u"}), "pixmaps/u.svg");
}

TEST_F(Themes, AreSafeWhenTheyAreHostile) {
    folder_.folder("user");
    (void)folder_.fifo("user/fifo.svg");
    folder_.folder("system/Fifo");
    (void)folder_.fifo("system/Fifo/index.theme");
    folder_.folder("system/Device");
    (void)folder_.link("system/Device/index.theme", "/dev/zero");
    theme("pixmaps/Fifo", "Directories=16\n" + k16);
    theme("system/Large", "Directories=16\n" + k16);
    fs::resize_file(folder_.at("system/Large/index.theme"), 1'000'000'000);
    (void)folder_.write("system/Binary/index.theme", std::string(100'000, '\0') + "[=\n]=\r");
    theme("system/Outside", "Directories=../Other,/,16/../../Other,16\n" + k16 +
                                "[../Other]\nSize=16\n[/]\nSize=16\n[16/../../Other]\nSize=16\n"
                                "[16]\nSize=99999999999999\nSize=-16\n");
    files({"pixmaps/Fifo/16/a.png", "system/Large/16/a.png", "system/Other/a.png",
           "system/Outside/16/b.svg", "user/u.svg"});
    (void)folder_.link("system/Outside/16/b.png", "nowhere");
    (void)folder_.link("system/Outside/16/c.png", "/dev/zero");
    (void)folder_.link("system/Outside/16/d.png", "b.svg");
    (void)folder_.fifo("system/Outside/16/e.png");
    EXPECT_EQ(findIn("Fifo", {"a"}), "pixmaps/Fifo/16/a.png");
    for (const char *const theme : {"Device", "Large", "Binary", "Outside"})
        EXPECT_EQ(findIn(theme, {"a"}), "-") << theme;
    EXPECT_EQ(findIn("Outside", {"b"}), "system/Outside/16/b.svg");
    EXPECT_EQ(findIn("Outside", {"d"}), "system/Outside/16/d.png");
    for (const char *const icon : {"c", "e", "fifo", "../u", "", ".", "..", "user/u", "/u"})
        EXPECT_EQ(findIn("Outside", {icon}), "-") << icon;
    EXPECT_EQ(findIn("Outside", {QString(QChar(0)), QString(QChar(0xD800)), "u"}), "user/u.svg");
}

TEST_F(Themes, AreReadOnceAndFromAnyThread) {
    constexpr int kCount = 1000;
    theme("system/T", "Directories=16\n" + k16);
    folder_.folder("system/T/16");
    for (int number = 0; number < kCount; ++number)
        folder_.file("system/T/16/" + std::to_string(number) + ".png");
    const IconTheme theme("T", bases());
    std::vector<std::thread> threads;
    std::array<int, 4> found{};
    for (int &count : found)
        threads.emplace_back([&count, &theme] {
            for (int number = 0; number < kCount; ++number)
                count += theme.find({QString::number(number)}, 16).has_value() ? 1 : 0;
        });
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(std::ranges::count(found, kCount), std::ssize(found));
    fs::remove_all(folder_.at("system"));
    EXPECT_EQ(find(theme, {"711"}, 16), "system/T/16/711.png") << "listed again";
}

TEST_F(Themes, OnAFileSystemThatDoesNotAnswerAreSkipped) {
    const MountedFolder mounted("tmpfs");
    if (!mounted.failureReason().empty())
        GTEST_SKIP() << mounted.failureReason();
    const fs::path system = mounted.at("icons/hicolor");
    fs::create_directories(system);
    fs::create_directory(mounted.at("silent"));
    theme("system/hicolor", "Directories=dead,16\n[dead]\nSize=16\n" + k16);
    files({"system/hicolor/16/a.png"});
    (void)folder_.link("system/hicolor/dead", mounted.at("silent/folder"));
    (void)folder_.link("system/hicolor/16/b.png", mounted.at("silent/b.png"));
    const UnresponsiveMount silent(mounted.at("silent"));
    if (!silent.failureReason().empty())
        GTEST_SKIP() << silent.failureReason();
    EXPECT_EQ(runWithTimeout([&] {
                  const IconTheme theme("silent", {mounted.at("silent").c_str(),
                                                   mounted.path().c_str(), base("system")});
                  EXPECT_EQ(find(theme, {"a"}, 16), "system/hicolor/16/a.png");
                  EXPECT_EQ(find(theme, {"b"}, 16), "-");
                  return HasFailure() ? 1 : 0;
              }),
              0);
}

TEST_F(Themes, AreChosenByTheSettings) {
    for (const char *const variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
        setenv(variable, folder_.at("home").c_str(), 1);
    setenv("XDG_DATA_DIRS", ("relative:" + folder_.path()).c_str(), 1);
    setenv("XDG_CONFIG_DIRS", folder_.at("etc").c_str(), 1);
    const struct {
        const char *file;
        const char *content;
        const char *name;
    } rows[] = {
        // from the weakest setting to the strongest
        {"icons/hicolor/index.theme", "", "hicolor"},
        {"icons/breeze/index.theme", "", "breeze"},
        {"icons/Adwaita/index.theme", "", "Adwaita"},
        {"icons/A/index.theme", "", "Adwaita"},
        {"home/.icons/B/index.theme", "", "Adwaita"},
        {"etc/gtk-3.0/settings.ini", "[Settings]\ngtk-icon-theme-name = A\n", "A"},
        {"home/gtk-3.0/settings.ini", "[Settings]\r\ngtk-icon-theme-name=B\r\n", "B"},
        {"home/gtk-4.0/settings.ini", "[Settings]\ngtk-icon-theme-name=../A\n", "B"},
        {"home/gtk-4.0/settings.ini", "[Settings]\ngtk-icon-theme-name=A\n", "A"},
        {"home/kdeglobals", "[Icons]\nTheme=not installed\n", "A"},
        {"home/kdeglobals", "[General]\nTheme=A\n[Icons]\nTheme=B\n", "B"},
    };
    for (const auto &row : rows) {
        (void)folder_.write(row.file, row.content);
        IconTheme::setCurrentName({});
        EXPECT_EQ(IconTheme::current()->name(), row.name) << row.file << ": " << row.content;
    }
    const auto before = IconTheme::current();
    IconTheme::setCurrentName("from the session");
    EXPECT_EQ(IconTheme::current()->name(), "B") << "it is not installed";
    theme("icons/from the session", "");
    IconTheme::setCurrentName("from the session");
    EXPECT_EQ(IconTheme::current()->name(), "from the session");
    EXPECT_EQ(before->name(), "B");
}

/// Themes and settings in the test's folder alone. All folders look as if they were modified long
/// ago, so that every change gives them another time.
class ChangingThemes : public Themes {
protected:
    ChangingThemes() {
        for (const char *const variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
            setenv(variable, folder_.at("home").c_str(), 1);
        setenv("XDG_DATA_DIRS", folder_.path().c_str(), 1);
        setenv("XDG_CONFIG_DIRS", folder_.at("etc").c_str(), 1);
        folder_.folder("home");
        theme("icons/hicolor",
              "Directories=apps/16,new/16\n[apps/16]\nSize=16\n[new/16]\nSize=16\n");
        theme("icons/breeze", "Directories=16\n" + k16);
        files({"icons/hicolor/apps/16/old.png", "icons/breeze/16/old.png"});
        IconTheme::setCurrentName({});
    }

    /// Makes the whole tree look old, then reads what there is.
    void read() const {
        for (const auto &item : fs::recursive_directory_iterator(folder_.path()))
            if (!item.is_symlink())
                fs::last_write_time(item, fs::file_time_type::clock::now() - std::chrono::hours(1));
        (void)IconTheme::refresh();
        (void)IconTheme::current()->find({"missing"}, 16);
    }
};

TEST_F(ChangingThemes, AreReadAgain) {
    const struct {
        const char *what;
        std::function<void()> change;
        bool isChange;
    } rows[] = {
        {"nothing", [] {}, false},
        {"a file", [&] { files({"icons/hicolor/apps/16/a.png"}); }, true},
        {"a folder of icons", [&] { files({"icons/hicolor/new/16/b.png"}); }, true},
        {"a theme for the user", [&] { files({"home/icons/breeze/16/c.png"}); }, true},
        {"an unthemed icon", [&] { files({"home/.icons/d.png"}); }, true},
        {"an index", [&] { theme("icons/breeze", "Directories=16,x\n" + k16); }, true},
        {"a removed folder", [&] { fs::remove_all(folder_.at("icons/hicolor/new")); }, true},
        {"a file of the theme", [&] { (void)folder_.write("icons/breeze/16/old.png", "x"); },
         false},
        {"other settings", [&] { (void)folder_.write("home/kdeglobals", "[Icons]\n"); }, false},
        {"a theme that is not chosen", [&] { theme("icons/A", "Directories=16\n" + k16); }, true},
        {"another choice", [&] { (void)folder_.write("home/kdeglobals", "[Icons]\nTheme=A\n"); },
         true},
        {"a better choice",
         [&] { (void)folder_.write("home/gtk-3.0/settings.ini", "[Settings]\n"); }, false},
    };
    int changes = 0;
    const auto observation = MWCore::MXNotificationCenter::defaultCenter()->addObserver(
        [&changes](const auto &) { ++changes; }, IconTheme::kChanged);
    for (const auto &row : rows) {
        read();
        changes = 0;
        const auto before = IconTheme::current();
        row.change();
        EXPECT_EQ(IconTheme::refresh(), row.isChange) << row.what;
        EXPECT_EQ(IconTheme::current() != before, row.isChange) << row.what;
        EXPECT_EQ(changes, row.isChange ? 1 : 0) << row.what;
        EXPECT_FALSE(IconTheme::refresh() && IconTheme::refresh()) << "settles after " << row.what;
    }
    EXPECT_EQ(IconTheme::current()->name(), "A");
    const QStringList watched = IconTheme::watchedFolders();
    for (const char *const folder : {"home", "icons", "icons/A", "home/gtk-3.0"})
        EXPECT_TRUE(watched.contains(QString::fromStdString(folder_.at(folder)))) << folder;
}

TEST_F(ChangingThemes, AreNoticedAtMostOnceInAnInterval) {
    CurrentTheme current;
    constexpr int64_t kBegin = 1;
    const auto first = current.theme(kBegin);
    EXPECT_FALSE(first->find({"a"}, 16));
    files({"icons/hicolor/apps/16/a.png"});
    fs::last_write_time(folder_.at("icons"), fs::file_time_type::clock::now());
    EXPECT_EQ(current.theme(kBegin + CurrentTheme::kCheckInterval - 1), first);
    std::thread([&] {
        EXPECT_NE(current.theme(kBegin + CurrentTheme::kCheckInterval), first);
    }).join();
    EXPECT_TRUE(current.theme(kBegin + CurrentTheme::kCheckInterval)->find({"a"}, 16));
    EXPECT_TRUE(current.refresh()) << "reports what was found before";
}

TEST_F(ChangingThemes, MayChangeWhileOtherThreadsSearch) {
    std::atomic<bool> isDone = false;
    std::atomic<int> missed = 0;
    std::vector<std::thread> threads;
    for (int count = 0; count < 3; ++count)
        threads.emplace_back([&] {
            while (!isDone)
                missed += IconTheme::current()->find({"old"}, 16) ? 0 : 1;
        });
    for (int round = 0; round < 50; ++round) {
        IconTheme::setCurrentName(round % 2 ? "breeze" : "");
        files({"icons/hicolor/apps/16/new.png"});
        fs::remove(folder_.at("icons/hicolor/apps/16/new.png"));
        (void)IconTheme::refresh();
    }
    isDone = true;
    for (std::thread &thread : threads)
        thread.join();
    EXPECT_EQ(missed, 0);
}

/// Compares every thirtieth icon of Adwaita in many sizes with what another implementation of the
/// standard finds. Sizes midway between two folders, for which it takes the first, are left out.
TEST(InstalledTheme, IsSearchedAsByPyxdg) {
    const char *const script = R"(
import os, xdg.IconTheme
names = {os.path.splitext(f)[0] for _, _, files in os.walk('/usr/share/icons/Adwaita') for f in files}
for name in sorted(names - {'index', 'icon-theme'})[::30]:
    for size in (8, 16, 19, 24, 31, 48, 60, 96, 128, 256, 300, 512):
        print(name, size, xdg.IconTheme.getIconPath(name, size, 'Adwaita'))
)";
    ProcessOptions options;
    options.environment = {"HOME=/none", "XDG_DATA_HOME=/none", "XDG_DATA_DIRS=/usr/share"};
    const ProcessResult found = runProcess({"/usr/bin/python3", "-c", script}, options);
    if (found.status != 0 || found.output.empty())
        GTEST_SKIP() << "needs python3-xdg and adwaita-icon-theme";
    const IconTheme theme("Adwaita", {"/usr/share/icons", "/usr/share/pixmaps"});
    const QStringList lines = QString::fromStdString(found.output).trimmed().split('\n');
    for (const QString &line : lines) {
        const QStringList words = line.split(' ');
        const auto path = theme.find({words[0]}, words[1].toInt());
        EXPECT_EQ(path.value_or("None"), words[2].toUtf8()) << qPrintable(line);
    }
    EXPECT_GT(lines.size(), 200);
}

} // namespace
