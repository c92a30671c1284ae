// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// Several writers of one item, and writers who may not preserve its owner or group.
#include "platform/metadata/MetadataStore.h"
#include "tests/platform/changes/Change.h"
#include "tests/platform/changes/SystemCalls.h"
#include "tests/platform/metadata/attributes.h"
#include "tests/platform/samples.h"
#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

#include <fcntl.h>
#include <grp.h>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using namespace MWCore;

TEST(SecondWriters, LoseNothingAtAnyMoment) {
    const struct {
        const char *first, *second;
        Change::Item item;
    } rows[] = {
        {"label", "type", Change::Item::Plain},
        {"label", "type", Change::Item::WithSidecar},
        {"invisible", "creator", Change::Item::WithSidecar},
        {"label", "resource", Change::Item::WithSidecar},
        {"resource", "label", Change::Item::WithSidecar},
        {"fork", "label in a sidecar", Change::Item::Plain},
        {"creator", "label", Change::Item::Plain},
        {"remove information", "resource", Change::Item::WithSidecar},
        {"label", "lock", Change::Item::Plain},
        {"lock", "date", Change::Item::Plain},
        {"date", "label", Change::Item::Plain},
        {"icon", "label", Change::Item::WithSidecar},
        {"icon", "resource", Change::Item::WithSidecar},
        {"label", "icon", Change::Item::WithSidecar},
        {"resource", "icon", Change::Item::WithSidecar},
        {"resource that the attribute has no room for", "resource",
         Change::Item::WithForkAttribute},
    };
    for (const auto &row : rows) {
        const Change &first = changeNamed(row.first);
        const Change &second = changeNamed(row.second);
        for (int moment = 1, calls = moment; moment <= calls; ++moment) {
            SCOPED_TRACE(std::string(row.first) + ", " + row.second + " at call " +
                         std::to_string(moment));
            const TemporaryFolder folder;
            const std::string item = folder.at(kItemName);
            makeItem(item, row.item);
            bool hasTurn = false; // afterwards the second writer would wait
            calls = 0;
            {
                const SystemCalls interrupted([&](const std::string &call) {
                    hasTurn = hasTurn || call == "flock";
                    if (!hasTurn && ++calls == moment) {
                        EXPECT_EQ(second.make(item), noErr);
                    }
                    return 0;
                });
                const OSStatus status = first.make(item);
                EXPECT_TRUE(status == noErr || second.isMade(item)) << status;
                EXPECT_EQ(first.isMade(item), status == noErr);
            }
            EXPECT_TRUE(moment > calls || second.isMade(item));
            unlock(item);
            if (::testing::Test::HasFailure())
                return;
        }
    }
}

/// Whether a writer has locked the folder, so that another would wait.
bool isLocked(const std::string &folder) {
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY);
    const bool isLocked = flock(descriptor, LOCK_EX | LOCK_NB) != 0;
    close(descriptor);
    return isLocked;
}

TEST(SecondWriters, CannotBothCreateAnItem) {
    for (const char *const what : {"alias", "alias of the classic form", "empty fork"}) {
        const Change &change = changeNamed(what);
        for (int moment = 1, calls = moment; moment <= calls; ++moment) {
            const TemporaryFolder folder;
            const std::string item = folder.at(std::string(what) + ".desktop");
            int successes = 0;
            calls = 0;
            {
                const SystemCalls interrupted([&](const std::string &call) {
                    const bool isNow =
                        call != "flock" && ++calls == moment && !isLocked(folder.path());
                    successes += isNow && change.make(item) == noErr ? 1 : 0;
                    return 0;
                });
                successes += change.make(item) == noErr ? 1 : 0;
            }
            ASSERT_EQ(successes, 1) << what << " at call " << moment;
            ASSERT_TRUE(change.isMade(item)) << what << " at call " << moment;
        }
    }
}

/// Another writer puts its temporary file in the place of ours when ours is about to be locked.
TEST(SecondWriters, DoNotRenameEachOthersTemporaryFiles) {
    const Change &resource = changeNamed("resource");
    const TemporaryFolder folder;
    const std::string item = folder.at(kItemName);
    makeItem(item, resource.item);
    bool isTaken = false;
    {
        const SystemCalls other([&](const std::string &call) {
            if (call == "openat without a name")
                return EOPNOTSUPP;
            for (const auto &entry : fs::directory_iterator(folder.path()))
                if (!isTaken && call == "flock" &&
                    entry.path().filename().string().starts_with(".mwcore")) {
                    isTaken = true;
                    fs::remove(entry.path());
                    raw::write(entry.path(), "half of another sidecar");
                }
            return 0;
        });
        EXPECT_EQ(resource.make(item), noErr);
    }
    EXPECT_TRUE(isTaken && resource.isMade(item) && hasWholeFork(item));
}

TEST(SecondWriters, NeverWriteUnlockedForLackOfDescriptors) {
    bool isOver = false;
    for (int moment = 1; !isOver; ++moment) {
        const TemporaryFolder folder;
        const std::string item = folder.file(kItemName);
        bool hasTurn = false;
        int calls = 0;
        const SystemCalls failing([&](const std::string &call) {
            hasTurn = hasTurn || call == "flock";
            return ++calls == moment ? EMFILE : 0;
        });
        const OSStatus status = changeNamed("label").make(item);
        EXPECT_TRUE(status != noErr || hasTurn) << "at call " << moment;
        isOver = moment > calls;
    }
}

TEST(SecondWriters, WaitForOthersThatMakeProgress) {
    const struct {
        const char *what;
        bool areAtWork;
        int checks; ///< during which the folder is locked
        bool hasLock;
    } rows[] = {
        {"many others", true, 10'000, true},
        {"others for longer than a writer waits", true, 100'000, false},
        {"a lock that nobody uses", false, 100'000, false},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        const TemporaryFolder folder;
        const std::string item = folder.file(kItemName);
        int checks = 0;
        bool hasLock = false;
        const SystemCalls busy([&](const std::string &call) {
            if (call == "nanosleep" && row.areAtWork && checks % 100 == 0) {
                struct stat before = {};
                struct stat now = {};
                stat(folder.path().c_str(), &before);
                do { // time stamps are coarse
                    chmod(folder.path().c_str(), 0700);
                    stat(folder.path().c_str(), &now);
                } while (now.st_ctim.tv_nsec == before.st_ctim.tv_nsec);
            }
            if (call == "nanosleep")
                return EINVAL; // so that the test does not sleep
            if (call != "flock" || ++checks < row.checks)
                return call == "flock" ? EWOULDBLOCK : 0;
            hasLock = true;
            return 0;
        });
        EXPECT_EQ(changeNamed("label").make(item), noErr);
        EXPECT_EQ(hasLock, row.hasLock);
    }
}

/// A user in a test, with ids that every Debian system has.
struct User {
    uid_t user;
    gid_t group;
    gid_t otherGroup;
};
constexpr User kBin = {2, 2, 1}; // also in the group "daemon"
constexpr User kSync = {4, kNobody, kNobody};

int asUser(const User &user, const std::function<int()> &work) {
    return runForked([&] {
        const gid_t groups[] = {user.group, user.otherGroup};
        if (setgroups(2, groups) != 0 || setgid(user.group) != 0 || setuid(user.user) != 0)
            return 100;
        return work();
    });
}

/// A sidecar of user "daemon" in a folder that everybody may write.
TEST(SecondWriters, OfAGroupPreserveAccess) {
    if (geteuid() != 0)
        GTEST_SKIP() << "needs several users";
    const QByteArray list = listForUser4();
    const struct {
        const char *what;
        User writer;
        gid_t group;
        mode_t mode;
        bool hasList;
        bool isWritten;
    } rows[] = {
        {"the owner is in the group", kBin, 1, 0660, false, true},
        {"the owner is not in the group", kBin, 2, 0660, false, false},
        {"everybody may do what the owner may", kBin, 2, 0666, false, true},
        {"the group would be lost", kSync, 1, 0664, true, false},
        {"everybody may do what the group may", kSync, 1, 0666, false, true},
        {"access control lists are kept", kBin, 1, 0660, true, true},
        {"the writer is the owner", {1, 1, 1}, 1, 0600, false, true},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        const TemporaryFolder folder;
        const std::string sidecar = folder.at(kSidecarName);
        makeItem(folder.at(kItemName), Change::Item::WithSidecar);
        fs::permissions(folder.path(), fs::perms::all);
        ASSERT_EQ(chown(sidecar.c_str(), 1, row.group), 0);
        ASSERT_EQ(chmod(sidecar.c_str(), row.mode), 0);
        if (row.hasList) {
            ASSERT_TRUE(raw::setAttribute(sidecar, "system.posix_acl_access", list));
        }
        struct stat before = {};
        ASSERT_EQ(stat(sidecar.c_str(), &before), 0);
        const auto content = raw::content(sidecar);
        EXPECT_EQ(asUser(row.writer,
                         [&] {
                             const OSStatus status =
                                 writeResourceFork((folder.at(kItemName)).c_str(), "other fork");
                             return status == noErr ? 0 : status == permErr ? 1 : 2;
                         }),
                  row.isWritten ? 0 : 1);
        struct stat after = {};
        ASSERT_EQ(stat(sidecar.c_str(), &after), 0);
        EXPECT_EQ(after.st_gid, row.mode == 0666 ? after.st_gid : row.group);
        EXPECT_EQ(after.st_mode, before.st_mode);
        EXPECT_EQ(raw::attribute(sidecar, "system.posix_acl_access"),
                  row.hasList ? std::optional(list) : std::nullopt);
        EXPECT_EQ(raw::content(sidecar) == content, !row.isWritten);
    }
}

TEST(SecondWriters, TakeTurnsInAFolderThatTheyMayNotRead) {
    if (geteuid() != 0)
        GTEST_SKIP() << "needs several users";
    const TemporaryFolder folder;
    const std::string item = folder.file(kItemName);
    fs::permissions(folder.path(), fs::perms(0333));
    ASSERT_EQ(chown(item.c_str(), kBin.user, kBin.group), 0);
    EXPECT_EQ(asUser(kBin,
                     [&] {
                         bool mustWait = false;
                         const SystemCalls watching([&](const std::string &call) {
                             const int other = open(item.c_str(), O_RDONLY);
                             if (call == "lsetxattr")
                                 mustWait = flock(other, LOCK_EX | LOCK_NB) != 0;
                             close(other);
                             return 0;
                         });
                         return changeNamed("label").make(item) == noErr && mustWait ? 0 : 1;
                     }),
              0);
}

TEST(SecondWriters, LetNobodyElseReadASidecar) {
    if (geteuid() != 0)
        GTEST_SKIP() << "needs several users";
    constexpr const char *kOfNewFiles = "system.posix_acl_default";
    constexpr const char *kOfTheFile = "system.posix_acl_access";
    QByteArray notForTheGroup = listForUser4();
    notForTheGroup[22] = 0; // the permissions of group::
    const struct {
        const char *what;
        Change::Item item;
        QByteArray folderList, itemList;
        User user;
        bool mayRead;
    } rows[] = {
        {"a private sidecar", Change::Item::WithSidecar, listForUser4(), {}, kSync, false},
        {"a new sidecar", Change::Item::Plain, listForUser4(), {}, kSync, false},
        {"a list for a user", Change::Item::Plain, {}, notForTheGroup, kSync, true},
        {"a list without the group", Change::Item::Plain, {}, notForTheGroup, kBin, false},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        const TemporaryFolder folder;
        const std::string item = folder.at(kItemName);
        fs::permissions(folder.path(), fs::perms(0755));
        makeItem(item, row.item);
        for (const auto &entry : fs::directory_iterator(folder.path())) {
            ASSERT_EQ(chown(entry.path().c_str(), 0, kBin.group), 0);
            fs::permissions(entry, fs::perms(row.user.user == kBin.user ? 0600 : 0640));
        }
        if (!row.folderList.isEmpty()) {
            ASSERT_TRUE(raw::setAttribute(folder.path(), kOfNewFiles, row.folderList));
        }
        if (!row.itemList.isEmpty()) {
            ASSERT_TRUE(raw::setAttribute(item, kOfTheFile, row.itemList));
        }
        ASSERT_EQ(writeResourceFork(item.c_str(), "fork"), noErr);
        EXPECT_EQ(
            asUser(row.user,
                   [&] { return access(folder.at(kSidecarName).c_str(), R_OK) == 0 ? 1 : 0; }),
            row.mayRead ? 1 : 0);
    }
}

TEST(SecondWriters, CannotBeBlockedByANameOrALock) {
    const TemporaryFolder folder;
    makeItem(folder.at(kItemName), Change::Item::WithSidecar);
    std::string taken; // the temporary name, which somebody else takes
    const auto takeTheName = [&](const std::string &call) {
        if (call == "openat without a name")
            return EOPNOTSUPP;
        for (const auto &entry : fs::directory_iterator(folder.path()))
            if (entry.path().filename().string().starts_with(".mwcore"))
                taken = entry.path();
        return 0;
    };
    {
        const SystemCalls watching(takeTheName);
        EXPECT_EQ(changeNamed("label").make(folder.at(kItemName)), noErr);
    }
    ASSERT_FALSE(taken.empty());
    fs::create_directory(taken);
    const SystemCalls watching(takeTheName);
    EXPECT_EQ(changeNamed("type").make(folder.at(kItemName)), noErr);
    EXPECT_TRUE(changeNamed("type").isMade(folder.at(kItemName)));
}

TEST(SecondWriters, FailAtTheFileSizeLimit) {
    const TemporaryFolder folder;
    const std::string item = folder.at(kItemName);
    makeItem(item, Change::Item::WithSidecar);
    EXPECT_EQ(runForked([&] {
                  constexpr rlimit kLimit = {10'000, 10'000};
                  setrlimit(RLIMIT_FSIZE, &kLimit);
                  const QByteArray fork(20'000, 'f');
                  return writeResourceFork(item.c_str(), fork) == fileBoundsErr ? 0 : 1;
              }),
              0);
    EXPECT_TRUE(hasWholeFork(item));
}

} // namespace
