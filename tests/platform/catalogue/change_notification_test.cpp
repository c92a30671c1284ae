// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/catalogue/ChangeNotification.h"

#include "tests/platform/references.h"
#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>

#include <gtest/gtest.h>
#include <sys/inotify.h>
#include <unistd.h>

using namespace MWCore;

namespace {

/// What a program sees that watches a folder, with the mask that file managers use.
class FolderWatch {
public:
    explicit FolderWatch(const std::string &folder) : queue_(inotify_init1(IN_NONBLOCK)) {
        inotify_add_watch(queue_, folder.c_str(),
                          IN_ALL_EVENTS & ~(IN_ACCESS | IN_OPEN | IN_CLOSE));
    }
    FolderWatch(const FolderWatch &) = delete;
    FolderWatch &operator=(const FolderWatch &) = delete;
    ~FolderWatch() { close(queue_); }

    /// Whether the folder's attributes have changed since the last call.
    [[nodiscard]] bool hasSeenAChange() const {
        inotify_event event = {};
        const bool isRead = read(queue_, &event, sizeof event) == ssize_t{sizeof event};
        return isRead && (event.mask & IN_ATTRIB);
    }

private:
    int queue_;
};

TEST(FolderNotifications, ReachThoseWhoWatchTheFolder) {
    const TemporaryFolder folder;
    const std::string path = folder.folder("watched");
    const FSRef ref = refTo(path);
    const FSRef file = refTo(folder.file("file"));
    std::filesystem::permissions(folder.path(), std::filesystem::perms(0755));
    const FolderWatch watch(path);
    EXPECT_EQ(FNNotify(ref, kFNDirectoryModifiedMessage), noErr);
    EXPECT_TRUE(watch.hasSeenAChange());
    for (const bool mayWrite : {true, false}) {
        if (geteuid() != 0)
            break; // the owner may always do it
        std::filesystem::permissions(path, std::filesystem::perms(mayWrite ? 0777 : 0555));
        EXPECT_TRUE(watch.hasSeenAChange()) << "of the permissions";
        EXPECT_EQ(runAsNobody([&] { return FNNotify(ref, kFNDirectoryModifiedMessage); }), noErr);
        EXPECT_EQ(watch.hasSeenAChange(), mayWrite);
    }
    EXPECT_EQ(FNNotify(ref, FNMessage(2)), paramErr);
    EXPECT_EQ(FNNotify(file, kFNDirectoryModifiedMessage), errFSNotAFolder);
}

} // namespace
