// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// Every change of an item, with an attack by the folder's owner, a failure, or the process killed
// at each system call.
#include "tests/platform/changes/Change.h"
#include "tests/platform/changes/SystemCalls.h"
#include "tests/platform/metadata/attributes.h"
#include "tests/platform/samples.h"
#include "tests/support/LoggedMessages.h"
#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <filesystem>
#include <map>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using namespace MWCore;

/// Everything of a folder and in it that a change could alter, as text.
std::map<std::string, std::string> stateOf(const fs::path &folder) {
    std::vector<std::string> paths = {folder};
    for (const auto &entry : fs::directory_iterator(folder))
        paths.push_back(entry.path());
    std::map<std::string, std::string> state;
    for (const std::string &path : paths) {
        struct statx item = {};
        statx(AT_FDCWD, path.c_str(), AT_SYMLINK_NOFOLLOW, STATX_BASIC_STATS, &item);
        state[path] = std::to_string(item.stx_mtime.tv_sec) + " " + std::to_string(item.stx_uid) +
                      " " + std::to_string(item.stx_attributes) +
                      raw::attribute(path, "user.com.apple.FinderInfo").value_or("").toStdString() +
                      (fs::is_directory(path) ? "" : raw::content(path).value_or("").toStdString());
    }
    return state;
}

/// Another user's folder with an item, and a folder of ours to which that user tries to redirect
/// the change.
struct Trap {
    explicit Trap(const Change &change)
        : dir(folder.folder("dir")), link(folder.link("link", folder.folder("ours"))),
          item(dir + "/" + kItemName) {
        fs::permissions(folder.path(), fs::perms(0755));
        for (const auto &path : {folder.path(), dir, link})
            EXPECT_EQ(lchown(path.c_str(), kNobody, kNobody), 0);
        makeItem(item, change.item);
        makeItem(folder.at(std::string("ours/") + kItemName), change.item);
    }
    Trap(const Trap &) = delete;
    Trap &operator=(const Trap &) = delete;
    ~Trap() {
        for (const auto &path :
             {item, link + "/" + kItemName, folder.at(std::string("ours/") + kItemName)})
            unlock(path);
    }

    void spring() const {
        renameat2(AT_FDCWD, dir.c_str(), AT_FDCWD, link.c_str(), RENAME_EXCHANGE);
    }

    TemporaryFolder folder;
    std::string dir, link, item;
};

/// What is at the folder's path when the change begins, until the attacker exchanges it.
enum class First { Folder, Link };

TEST(AttackedChanges, NeverReachAnotherFolder) {
    if (geteuid() != 0)
        GTEST_SKIP() << "needs two users";
    for (const Change &change : allChanges())
        for (const First first : {First::Folder, First::Link}) {
            bool isOver = false;
            for (int moment = 1; !isOver; ++moment) {
                SCOPED_TRACE(std::string(change.what) +
                             (first == First::Link ? " by the link" : "") + ", at call " +
                             std::to_string(moment));
                const Trap trap(change);
                const auto before = stateOf(trap.folder.at("ours"));
                int calls = 0;
                OSStatus status = noErr;
                if (first == First::Link)
                    trap.spring();
                {
                    const SystemCalls hostile([&](const std::string & /*call*/) {
                        if (++calls == moment)
                            trap.spring();
                        return 0;
                    });
                    status = change.make(trap.item);
                }
                isOver = moment > calls;
                EXPECT_EQ(stateOf(trap.folder.at("ours")), before);
                if (isOver && first == First::Link) {
                    EXPECT_NE(status, noErr);
                }
                if (isOver && first == First::Folder) {
                    EXPECT_TRUE(status == noErr && change.isMade(trap.item));
                }
                if (::testing::Test::HasFailure())
                    return;
            }
        }
}

TEST(AttackedChanges, FollowLinksThatOnlyWeCouldHaveMade) {
    if (geteuid() != 0)
        GTEST_SKIP() << "needs two users";
    const struct {
        const char *what;
        mode_t folderMode;
        uid_t folderOwner;
        gid_t folderGroup;
        uid_t linkOwner;
        bool hasList;
        bool isFollowed;
    } rows[] = {
        {"a link of ours in a folder of ours", 0755, 0, kNobody, 0, false, true},
        {"a link of ours in a sticky folder", 01777, 0, kNobody, 0, false, true},
        {"another user's link in a sticky folder", 01777, 0, kNobody, kNobody, false, false},
        {"a link of ours in a folder that everybody may write", 0777, 0, kNobody, 0, false, false},
        {"a link of ours in another user's folder", 0755, kNobody, kNobody, 0, false, false},
        {"a link of ours in a folder that a group may write", 0775, 0, kNobody, 0, false, false},
        {"a link of ours in a folder that our own group may write", 0775, 0, 0, 0, false, true},
        {"a link of ours in a folder with an access control list", 0775, 0, 0, 0, true, false},
    };
    for (const auto &row : rows)
        for (const char *const path : {"/link/item", "/link/../real/item", "/link/."}) {
            SCOPED_TRACE(std::string(row.what) + path);
            const TemporaryFolder folder;
            const std::string real = folder.folder("real");
            const bool isFolder = path == std::string("/link/.");
            const std::string item = isFolder ? real : real + "/item";
            raw::write(real + "/item", "");
            const std::string dir = folder.folder("dir");
            ASSERT_EQ(symlink("../real", (dir + "/link").c_str()), 0);
            ASSERT_EQ(lchown((dir + "/link").c_str(), row.linkOwner, 0), 0);
            ASSERT_EQ(chown(dir.c_str(), row.folderOwner, row.folderGroup), 0);
            if (row.hasList) {
                ASSERT_TRUE(raw::setAttribute(dir, "system.posix_acl_access", listForUser4()));
            }
            ASSERT_EQ(chmod(dir.c_str(), row.folderMode), 0);
            const Change &label = changeNamed("label");
            EXPECT_EQ(label.make(dir + path), row.isFollowed ? noErr : foreignLinkErr);
            EXPECT_EQ(label.isMade(item), row.isFollowed);
        }
}

/// Makes @p change once for each of its system calls. At that call, @p interfere runs and returns
/// the error with which it fails, or 0; afterwards @p inspect checks the folder.
void atEachCall(const Change &change, const std::function<int(const std::string &call)> &interfere,
                const std::function<void(const TemporaryFolder &, OSStatus)> &inspect) {
    bool isOver = false;
    for (int moment = 1; !isOver && !::testing::Test::HasFailure(); ++moment) {
        const TemporaryFolder folder;
        const std::string item = folder.at(kItemName);
        makeItem(item, change.item);
        int calls = 0;
        std::string last;
        OSStatus status = noErr;
        {
            const SystemCalls failing([&](const std::string &call) {
                last = calls + 1 == moment ? call : last;
                return ++calls == moment ? interfere(call) : 0;
            });
            status = change.make(item);
        }
        isOver = moment > calls;
        SCOPED_TRACE(std::string(change.what) + ", at call " + std::to_string(moment) + " " + last);
        inspect(folder, status);
        unlock(item);
    }
}

TEST(AttackedChanges, LoseNothingWhicheverCallFails) {
    const LoggedMessages unseen;
    for (const Change &change : allChanges())
        for (const int error : {ENOENT, ESTALE, EMFILE, ENOSPC}) {
            SCOPED_TRACE(strerror(error));
            atEachCall(
                change,
                [error](const std::string &call) { // other calls may find no item
                    return error != ENOENT || call == "open" || call == "faccessat" ? error : 0;
                },
                [&](const TemporaryFolder &folder, OSStatus status) {
                    const std::string item = folder.at(kItemName);
                    EXPECT_TRUE(isIntact(item, change.item));
                    if (status == noErr) {
                        EXPECT_TRUE(change.isMade(item));
                    }
                    if (status != noErr && change.item == Change::Item::None) {
                        EXPECT_TRUE(!fs::exists(item) || change.isMade(item))
                            << "an incomplete item";
                    }
                });
        }
}

TEST(AttackedChanges, LoseNothingWhenTheProcessIsKilled) {
    for (const Change &change : allChanges())
        for (int moment = 1; moment > 0; ++moment) {
            SCOPED_TRACE(std::string(change.what) + ", at call " + std::to_string(moment));
            const TemporaryFolder folder;
            const std::string item = folder.at(kItemName);
            makeItem(item, change.item);
            const int ended = runForked([&] {
                int calls = 0;
                const SystemCalls killing([&](const std::string & /*call*/) {
                    return ++calls == moment ? raise(SIGKILL) : 0;
                });
                return change.make(item) == noErr ? 0 : 1;
            });
            EXPECT_TRUE(isIntact(item, change.item));
            const OSStatus next = change.make(item);
            EXPECT_TRUE(next == noErr || next == dupFNErr || next == fnfErr)
                << "the next attempt failed: " << next;
            EXPECT_TRUE(change.isMade(item));
            for (const auto &entry : fs::directory_iterator(folder.path()))
                EXPECT_FALSE(entry.path().filename().string().starts_with(".mwcore")) << entry;
            unlock(item);
            if (ended == 0 || ::testing::Test::HasFailure())
                break;
        }
}

TEST(AttackedChanges, NeverExposeAPrivateSidecar) {
    const Change &label = changeNamed("label in a sidecar");
    for (const bool withNames : {false, true}) {
        const TemporaryFolder folder;
        const std::string item = folder.at(kItemName);
        makeItem(item, label.item);
        fs::permissions(folder.at(kSidecarName), fs::perms(0600));
        const SystemCalls watching([&](const std::string &call) {
            for (const auto &entry : fs::directory_iterator(folder.path())) {
                if (entry.path() != item) {
                    EXPECT_EQ(fs::status(entry).permissions(), fs::perms(0600)) << call << entry;
                }
            }
            return withNames && call == "openat without a name" ? EOPNOTSUPP : 0;
        });
        EXPECT_EQ(label.make(item), noErr);
        EXPECT_TRUE(label.isMade(item));
    }
}

} // namespace
