// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/support/Process.h"
#include "tests/support/SessionBus.h"
#include "tests/support/TemporaryFolder.h"

#include <MWCore/DesktopIconLookup.h>
#include <MWCore/DesktopIcons.h>
#include <MWCore/IconTheme.h>
#include <MWCore/MXNotificationCenter.h>

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <thread>

namespace {

using namespace MWCore;
using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

constexpr const char *kMetadataService = "org.gtk.vfs.Metadata";

/// A home folder, and the environment of a session without a bus.
class DesktopIcons : public ::testing::Test {
protected:
    /// Runs @p work in a process of its own with a bus of its own, as GIO keeps its connection.
    void inSession(const std::function<void(const SessionBus &)> &work) const {
        const auto session = [&] {
            setEnvironment();
            const SessionBus bus;
            setenv("DBUS_SESSION_BUS_ADDRESS", bus.address().c_str(), 1);
            work(bus);
            return HasFailure() ? 1 : 0;
        };
        if (runProcess({"gio", "version"}).status != 0 || runProcess({"gdbus", "help"}).status != 0)
            GTEST_SKIP() << "needs libglib2.0-bin";
        EXPECT_EQ(runForked(session), 0);
    }

    void setEnvironment() const {
        folder_.folder("home");
        folder_.folder("run");
        for (const char *const name : {"HOME", "XDG_RUNTIME_DIR"})
            setenv(name, folder_.at(name == std::string("HOME") ? "home" : "run").c_str(), 1);
        for (const char *const name : {"XDG_DATA_HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME",
                                       "DBUS_SESSION_BUS_ADDRESS", "DISPLAY"})
            unsetenv(name);
    }

    /// Makes the file @p item, unless there is one, and lets GIO store @p icon for it.
    void set(const std::string &item, const std::string &icon,
             const char *key = "custom-icon") const {
        const std::string path = folder_.at(item);
        if (!std::filesystem::exists(path))
            (void)folder_.write(item, "");
        const ProcessResult result =
            runProcess({"gio", "set", path, std::string("metadata::") + key, icon});
        ASSERT_EQ(result.status, 0) << result.errorOutput;
    }

    [[nodiscard]] std::string url(const std::string &name) const {
        return "file://" + folder_.at(name);
    }

    /// The icon's file, in the test's folder, or its name; "-" without an icon.
    [[nodiscard]] std::string iconOf(const std::string &item) const {
        const auto icon = lookUpDesktopIcon(QByteArray::fromStdString(folder_.at(item)));
        if (!icon)
            return "-";
        const auto file = std::filesystem::path(icon->file.toStdString());
        return icon->file.isEmpty() ? icon->themeName.toStdString()
                                    : file.lexically_relative(folder_.path()).string();
    }

    TemporaryFolder folder_;
};

/// Waits for what another thread does.
bool waitFor(const std::function<bool()> &condition) {
    const auto deadline = Clock::now() + 60s;
    while (!condition() && Clock::now() < deadline)
        std::this_thread::sleep_for(1ms);
    return condition();
}

TEST_F(DesktopIcons, AreThoseThatGioHasStored) {
    const std::string icon = folder_.write("pictures/i c\xf6n.png", "");
    const std::string encoded = url("pictures/i%20c%F6n.png");
    (void)folder_.fifo("pictures/fifo");
    const struct {
        const char *item;
        std::string icon;
        const char *key;
        const char *found;
    } rows[] = {
        {"home/file", encoded, "custom-icon", "pictures/i c\xf6n.png"},
        {"home/deep/er/a name longer than its hash.txt", encoded, "custom-icon",
         "pictures/i c\xf6n.png"},
        {"home/\xe9\xff", encoded, "custom-icon", "pictures/i c\xf6n.png"},
        {"outside/file", encoded, "custom-icon", "pictures/i c\xf6n.png"},
        {"home", "folder-red", "custom-icon-name", "folder-red"},
        {"home/deep", "folder-blue", "custom-icon-name", "folder-blue"},
        {"home/remote", "file://elsewhere" + icon, "custom-icon", "-"},
        {"home/web", "https://localhost/i.png", "custom-icon", "-"},
        {"home/missing", url("missing.png"), "custom-icon", "-"},
        {"home/fifo", url("pictures/fifo"), "custom-icon", "-"},
        {"home/device", "file:///dev/zero", "custom-icon", "-"},
        {"home/folder", url("pictures"), "custom-icon", "-"},
        {"pictures", "i%20c%F6n.png", "custom-icon", "pictures/i c\xf6n.png"},
        {"home/other", "x", "custom-icon-2", "-"},
    };
    inSession([&](const SessionBus &) {
        ASSERT_TRUE(useDesktopIcons());
        EXPECT_EQ(iconOf("home"), "-") << "there is no metadata yet";
        for (const auto &row : rows)
            set(row.item, row.icon, row.key);
        (void)folder_.write("home/deep/file", "");
        for (const char *const state : {"in the journal", "in the tree"}) {
            ASSERT_TRUE(useDesktopIcons()) << "looks at the names again";
            for (const auto &row : rows)
                EXPECT_EQ(iconOf(row.item), row.found) << row.item << " " << state;
            for (const char *const item : {"home/deep/file", "outside", "home/gone", "x", "/"})
                EXPECT_EQ(iconOf(item), "-") << item << " " << state;
            const pid_t service = SessionBus::processOf(kMetadataService);
            ASSERT_GT(service, 0);
            kill(service, SIGTERM); // it moves the journal into the tree
            ASSERT_TRUE(waitFor([] { return SessionBus::processOf(kMetadataService) < 0; }));
        }
        stopUsingDesktopIcons();
        EXPECT_EQ(iconOf("home/file"), "-");
    });
}

TEST_F(DesktopIcons, DoNotWaitForASessionThatDoesNotAnswer) {
    inSession([&](const SessionBus &bus) {
        set("home/item", "inside", "custom-icon-name");
        set("outside/item", "outside", "custom-icon-name");
        const pid_t service = SessionBus::processOf(kMetadataService);
        ASSERT_GT(service, 0);
        kill(service, SIGSTOP);
        const auto begin = Clock::now();
        ASSERT_TRUE(useDesktopIcons());
        EXPECT_TRUE(waitFor([&] { return iconOf("home/item") == "inside"; }));
        for (int count = 0; count < 1000; ++count)
            EXPECT_EQ(iconOf("outside/item"), "-");
        EXPECT_LT(Clock::now() - begin, 10s) << "GIO waits for 25 s each time";
        kill(service, SIGCONT);
        EXPECT_TRUE(waitFor([&] { return iconOf("outside/item") == "outside"; }));
        kill(bus.process(), SIGKILL);
        EXPECT_TRUE(waitFor([&] { return kill(service, 0) != 0; })) << "it ends with the bus";
        EXPECT_EQ(iconOf("home/item"), "inside") << "and this process does not";
    });
    inSession([&](const SessionBus &bus) {
        kill(bus.process(), SIGSTOP);
        const auto begin = Clock::now();
        EXPECT_TRUE(useDesktopIcons());
        EXPECT_EQ(iconOf("home/item"), "-");
        stopUsingDesktopIcons();
        EXPECT_LT(Clock::now() - begin, 10s);
    });
    EXPECT_EQ(runForked([&] {
                  setEnvironment();
                  return useDesktopIcons() ? 1 : 0;
              }),
              0)
        << "there is no bus";
}

TEST_F(DesktopIcons, HaveTheThemeOfTheSession) {
    const auto choose = [](const char *theme) {
        const ProcessResult result =
            runProcess({"gsettings", "set", "org.gnome.desktop.interface", "icon-theme", theme});
        EXPECT_EQ(result.status, 0) << result.errorOutput;
    };
    inSession([&](const SessionBus &) {
        for (const char *const theme : {"usual", "first", "second"})
            (void)folder_.write(std::string("home/.icons/") + theme + "/index.theme",
                                "[Icon Theme]\n");
        (void)folder_.write("home/.config/gtk-3.0/settings.ini",
                            "[Settings]\ngtk-icon-theme-name=usual\n");
        choose("first");
        setenv("XDG_CURRENT_DESKTOP", "KDE", 1);
        ASSERT_TRUE(useDesktopIcons());
        EXPECT_EQ(IconTheme::current()->name(), "usual");
        setenv("XDG_CURRENT_DESKTOP", "ubuntu:GNOME", 1);
        ASSERT_TRUE(useDesktopIcons());
        EXPECT_TRUE(waitFor([] { return IconTheme::current()->name() == "first"; }));
        set("home/item", "inside", "custom-icon-name");
        std::atomic<bool> isFound = false;
        auto changes = MXNotificationCenter::defaultCenter()->addObserver(
            [&](const MXNotification & /*change*/) { isFound = iconOf("home/item") == "inside"; },
            IconTheme::kChanged);
        choose("second");
        EXPECT_TRUE(waitFor([] { return IconTheme::current()->name() == "second"; }));
        EXPECT_TRUE(waitFor([&] { return isFound.load(); })) << "observers may ask for icons";
        changes = {};
        stopUsingDesktopIcons();
        EXPECT_TRUE(waitFor([] { return IconTheme::current()->name() == "usual"; }));
    });
}

} // namespace
