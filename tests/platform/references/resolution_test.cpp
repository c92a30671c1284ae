// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// A resolution must not take another item of the same inode number for the item, nor one that it
// did not examine.
#include "platform/aliases/Aliases.h"
#include "platform/files/ItemIdentity.h"
#include "platform/references/AliasResolution.h"
#include "platform/references/MountGuard.h"
#include "tests/platform/metadata/attributes.h"
#include "tests/platform/references.h"
#include "tests/support/MountedFolder.h"
#include "tests/support/Process.h"

#include <gtest/gtest.h>

#include <filesystem>

#include <sys/mount.h>
#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;
using namespace MWCore;

AliasRecord recordOfItem(const std::string &path) {
    OSStatus status = noErr;
    const auto record = aliasRecordOf(path.c_str(), &status);
    EXPECT_TRUE(record) << path;
    return record.value_or(AliasRecord());
}

/// The record of an item on a file system without handles and birth times.
AliasRecord weakRecordOf(const std::string &path) {
    AliasRecord record = recordOfItem(path);
    record.identity.handle.clear();
    record.identity.birthTime.reset();
    return record;
}

uint64_t inodeOf(const std::string &path) {
    struct stat item = {};
    EXPECT_EQ(stat(path.c_str(), &item), 0) << path;
    return item.st_ino;
}

/// The path of the item, or the text of the status.
std::string found(const AliasRecord &record, const SearchLimits &limits = {}) {
    OSStatus status = noErr;
    const auto item = locate(record, Replacement::Accept, limits, &status);
    return item ? item->path.toStdString() : statusText(status);
}

FileIdentity identity(uint64_t inode, std::optional<int64_t> birthTime, const char *handle,
                      int32_t handleType = 1) {
    return {0, inode, birthTime, *handle ? handleType : 0, handle};
}

TEST(Identities, AreComparedByWhatBothHave) {
    const FileIdentity weak = identity(7, {}, "");
    const FileIdentity handle = identity(7, {}, "h");
    const FileIdentity birth = identity(7, 5, "");
    const FileIdentity both = identity(7, 5, "h");
    const struct {
        const char *what;
        FileIdentity one;
        FileIdentity other;
        bool isSame;
    } rows[] = {
        {"numbers alone", weak, weak, true},
        {"other numbers", weak, identity(8, {}, ""), false},
        {"a handle on one side", handle, weak, false},
        {"a birth time on one side", birth, weak, false},
        {"nothing in common", handle, birth, false},
        {"one part in common", handle, both, true},
        {"another handle", both, identity(7, 5, "i"), false},
        {"another type of handle", handle, identity(7, {}, "h", 2), false},
        {"another birth time", both, identity(7, 6, ""), false},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(isSameItem(row.one, row.other), row.isSame) << row.what;
        EXPECT_EQ(isSameItem(row.other, row.one), row.isSame) << row.what;
    }
}

/// A file system "volume" with "item" in it, mounted in another one with "other" in it. A record is
/// given the inode number of "other", as if both file systems had counted alike.
class EjectedVolume {
public:
    explicit EjectedVolume(const char *type) : outer_("tmpfs") {
        if (!outer_.failureReason().empty())
            return;
        fs::create_directory(volume());
        raw::write(outer_.at("other"), "");
        mountAgain(type);
        raw::write(volume() + "/item", "");
        record_ = weakRecordOf(volume() + "/item");
        ref_ = refTo(volume() + "/item");
        EXPECT_EQ(umount(volume().c_str()), 0);
        setenv("HOME", outer_.path().c_str(), 1);
    }

    void mountAgain(const char *type) const {
        EXPECT_EQ(mount("none", volume().c_str(), type, 0, nullptr), 0);
    }
    [[nodiscard]] const std::string &failureReason() const { return outer_.failureReason(); }
    [[nodiscard]] std::string volume() const { return outer_.at("volume"); }
    [[nodiscard]] std::string other() const { return outer_.at("other"); }

    /// For an item with the inode number of @p path.
    [[nodiscard]] AliasRecord recordOfNumber(const std::string &path) const {
        AliasRecord record = record_;
        record.identity.inode = inodeOf(path);
        return record;
    }
    [[nodiscard]] FSRef refOfNumber(const std::string &path) const {
        return {ref_.path, recordOfNumber(path).identity};
    }

private:
    MountedFolder outer_;
    AliasRecord record_;
    FSRef ref_;
};

TEST(Resolution, FailsForAnItemOnAnEjectedVolume) {
    const EjectedVolume ejected("ramfs");
    if (!ejected.failureReason().empty())
        GTEST_SKIP() << ejected.failureReason();
    QByteArray path;
    EXPECT_EQ(found(ejected.recordOfNumber(ejected.other())), statusText(fnfErr));
    EXPECT_EQ(FSRefMakePath(ejected.refOfNumber(ejected.other()), &path), fnfErr);
    AliasRecord older = ejected.recordOfNumber(ejected.other());
    older.fileSystemType.clear();
    older.source.clear();
    EXPECT_EQ(found(older), statusText(fnfErr)) << "a record without the file system's type";
    AliasRecord strong = ejected.recordOfNumber(ejected.other());
    strong.identity.birthTime = 1;
    EXPECT_EQ(found(strong), statusText(fnfErr));
}

TEST(Resolution, DistinguishesVolumesOfTheSameNumber) {
    constexpr int kAttempts = 50; // another test may mount something at the same moment
    for (int attempt = 0; attempt < kAttempts; ++attempt) {
        const EjectedVolume ejected("ramfs");
        if (!ejected.failureReason().empty())
            GTEST_SKIP() << ejected.failureReason();
        ejected.mountAgain("ramfs");
        const std::string stranger = ejected.volume() + "/stranger";
        raw::write(stranger, "");
        const AliasRecord record = ejected.recordOfNumber(stranger);
        const bool hasSameNumber = record.identity.device == recordOfItem(stranger).identity.device;
        EXPECT_EQ(found(record), statusText(fnfErr));
        umount2(ejected.volume().c_str(), MNT_DETACH);
        if (hasSameNumber)
            return;
    }
    FAIL() << "no volume got the number of another";
}

TEST(MountGuard, ResolvesPathsLikeTheKernel) {
    const MountedFolder mounted("tmpfs");
    if (!mounted.failureReason().empty())
        GTEST_SKIP() << mounted.failureReason();
    const TemporaryFolder folder;
    fs::create_directories(mounted.at("a/b"));
    raw::write(mounted.at("a/b/item"), "");
    (void)folder.folder("here");
    (void)folder.link("there", mounted.at("a"));
    (void)folder.link("circle", "circle");
    fs::create_symlink("../../a/./b//item", mounted.at("a/b/relative"));
    fs::create_symlink(folder.at("here"), mounted.at("a/back"));
    const char *const rows[] = {
        "here",
        "here/.",
        "here//../here",
        "nothing",
        "nothing/here",
        "there",
        "there/",
        "there/b",
        "there/b/..",
        "there/../a/b/item",
        "there/b/item",
        "there/b/item/",
        "there/b/item/x",
        "there/b/relative",
        "there/back",
        "there/back/",
        "circle",
        "circle/x",
        "there/back/../there/b/item",
    };
    MountSnapshot mounts;
    SearchBudget budget({});
    MountGuard guard(mounts, budget);
    for (const char *const row : rows)
        for (const FinalLink link : {FinalLink::Keep, FinalLink::Follow}) {
            const std::string path = folder.at(row);
            const bool keeps = link == FinalLink::Keep;
            struct stat expected = {};
            struct stat item = {};
            const int outcome = (keeps ? lstat : stat)(path.c_str(), &expected);
            const OSStatus expectedStatus = statusFromErrno(outcome == 0 ? 0 : errno);
            OSStatus status = noErr;
            QByteArray real;
            const Descriptor opened = guard.open(path.c_str(), link, &status, &real);
            EXPECT_EQ(status, expectedStatus) << row << keeps;
            if (!opened || outcome != 0)
                continue;
            EXPECT_EQ(fstat(opened.number(), &item), 0);
            EXPECT_EQ(item.st_ino, expected.st_ino) << row << keeps;
            if (!keeps) {
                EXPECT_EQ(real.toStdString(), fs::canonical(path)) << row;
            }
        }
}

/// "home/inner/deep/item", each folder with 40 other names in it.
std::string madeHome(const TemporaryFolder &folder) {
    std::string path = folder.path();
    for (const char *const name : {"home", "inner", "deep"}) {
        path += std::string("/") + name;
        fs::create_directory(path);
        for (int number = 0; number < 40; ++number)
            raw::write(path + "/" + std::to_string(number), "");
    }
    raw::write(path + "/item", "");
    setenv("HOME", folder.at("home").c_str(), 1);
    return path + "/item";
}

TEST(Resolution, FindsNoOtherItemWhenCutShort) {
    const TemporaryFolder folder;
    AliasRecord record = recordOfItem(madeHome(folder));
    record.identity.handle.clear(); // by which the kernel would find it for the superuser
    fs::rename(folder.at("home/inner"), folder.at("home/renamed"));
    fs::create_directories(folder.at("home/inner/deep"));
    raw::write(folder.at("home/inner/deep/item"), "another");
    const std::atomic<bool> cancelled = true;
    EXPECT_EQ(found(record, {.cancelled = &cancelled}), statusText(userCanceledErr));
    EXPECT_EQ(found(record, {.entries = 0}), statusText(fileBoundsErr));
    EXPECT_EQ(found(record), folder.at("home/renamed/deep/item"));
}

TEST(Resolution, SharesOneBudgetAmongAllLevels) {
    const TemporaryFolder folder;
    AliasRecord record = recordOfItem(madeHome(folder));
    record.identity.handle.clear();
    fs::rename(folder.at("home/inner/deep/item"), folder.at("home/inner/deep/renamed"));
    fs::rename(folder.at("home/inner/deep"), folder.at("home/inner/other"));
    fs::rename(folder.at("home/inner"), folder.at("home/other"));
    EXPECT_EQ(found(record, {.entries = 1}), statusText(fileBoundsErr));
    EXPECT_EQ(found(record, {.entries = 200}), folder.at("home/other/other/renamed"));
}

TEST(Resolution, SharesOneBudgetAlongAChain) {
    const TemporaryFolder folder;
    fs::permissions(folder.path(), fs::perms::all);
    const auto follow = [&folder] { // not as root, for whom the kernel finds it
        (void)madeHome(folder);
        std::string target = folder.at("home/item");
        raw::write(target, "");
        for (const char *const name : {"1.desktop", "2.desktop", "3.desktop"}) {
            const std::string alias = folder.at(std::string("home/") + name);
            EXPECT_EQ(FSCreateAliasFile(refTo(target), alias.c_str(), AliasFileForm::DesktopEntry),
                      noErr);
            fs::rename(target, folder.at(std::string("home/renamed-") + name));
            target = alias;
        }
        const auto follows = [&](int64_t names, const std::atomic<bool> *cancelled) {
            FSRef ref = refTo(target);
            bool isFolder = false;
            bool wasAliased = false;
            // The alias file itself moves after the reference to it was made.
            fs::rename(target, folder.at("home/moved.desktop"));
            const OSStatus status =
                FSResolveAliasFile(&ref, AliasSteps::All, &isFolder, &wasAliased, cancelled, names);
            fs::rename(folder.at("home/moved.desktop"), target);
            return status == noErr ? ref.path.toStdString() : statusText(status);
        };
        const std::atomic<bool> cancelled = true;
        EXPECT_EQ(follows(kMostSearchedNames, &cancelled), statusText(userCanceledErr));
        EXPECT_EQ(follows(1, nullptr), statusText(fileBoundsErr)) << "enough for each step alone";
        EXPECT_EQ(follows(400, nullptr), folder.at("home/renamed-1.desktop"));
        return ::testing::Test::HasFailure() ? 1 : 0;
    };
    EXPECT_EQ(runAsNobody(follow), 0);
}

TEST(Resolution, DoesNotFollowDotsInARecordedPath) {
    const TemporaryFolder folder;
    (void)madeHome(folder);
    raw::write(folder.at("home/item"), "");
    AliasRecord record = recordOfItem(folder.at("home/item"));
    record.identity.handle.clear();
    fs::rename(folder.at("home/item"), folder.at("home/renamed"));
    // Otherwise each level would be searched by its number, as often as it is in the path.
    record.path = record.realPath = (folder.at("home") + "/z/../z/../item").c_str();
    for (const char *const name : {"home/inner", "home", "home/inner", "home"})
        record.ancestors.push_back(inodeOf(folder.at(name)));
    EXPECT_EQ(found(record), folder.at("home/renamed"));
}

} // namespace
