// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/aliases/Aliases.h"
#include "platform/foundation/FileSystemText.h"
#include "platform/references/AliasResolution.h"
#include "tests/platform/metadata/attributes.h"
#include "tests/platform/references.h"
#include "tests/support/MountedFolder.h"
#include "tests/support/Process.h"

#include <gtest/gtest.h>

#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using namespace MWCore;

/// What happens to an item in a folder "home/inner" and where it is then, relative to "home".
struct FateRow {
    const char *what;
    void (*happens)(const fs::path &home);
    const char *then;
};
constexpr FateRow kFates[] = {
    {"nothing", [](const fs::path & /*home*/) {}, "inner/item"},
    {"renamed", [](const fs::path &home) { fs::rename(home / "inner/item", home / "inner/new"); },
     "inner/new"},
    {"moved", [](const fs::path &home) { fs::rename(home / "inner/item", home / "other/deep/it"); },
     "other/deep/it"},
    {"the folder renamed", [](const fs::path &home) { fs::rename(home / "inner", home / "x"); },
     "x/item"},
    {"both renamed",
     [](const fs::path &home) {
         fs::rename(home / "inner/item", home / "inner/new");
         fs::rename(home / "inner", home / "x");
     },
     "x/new"},
    {"the folder moved",
     [](const fs::path &home) { fs::rename(home / "inner", home / "other/deep/inner"); },
     "other/deep/inner/item"},
    {"replaced in place",
     [](const fs::path &home) {
         raw::write(home / "inner/saved", "newer");
         fs::rename(home / "inner/saved", home / "inner/item");
     },
     "inner/item"},
    {"renamed, another item in its place",
     [](const fs::path &home) {
         fs::rename(home / "inner/item", home / "inner/item.1");
         raw::write(home / "inner/item", "newer");
     },
     "inner/item.1"},
    {"renamed to invalid UTF-8",
     [](const fs::path &home) { fs::rename(home / "inner/item", home / "inner/\xFF\xC3"); },
     "inner/\xFF\xC3"},
    {"deleted", [](const fs::path &home) { fs::remove(home / "inner/item"); }, nullptr},
    {"deleted with its folder", [](const fs::path &home) { fs::remove_all(home / "inner"); },
     nullptr},
    {"deleted, others created at once",
     [](const fs::path &home) {
         fs::remove(home / "inner/item");
         for (int number = 0; number < 50; ++number)
             raw::write(home / "inner" / std::to_string(number), "");
     },
     nullptr},
};

/// Creates the folder "home" with the item; everybody may change everything in it.
fs::path madeHome(const fs::path &where) {
    const fs::path home = where / "home";
    fs::create_directories(home / "inner");
    fs::create_directories(home / "other/deep");
    raw::write(home / "inner/item", "content");
    for (const auto &folder : {where, home, home / "inner", home / "other", home / "other/deep"})
        fs::permissions(folder, fs::perms::all);
    return home;
}

/// The number of fates after which an alias, resolved by the current user, leads to a wrong path.
int wrongFates(const fs::path &where) {
    int wrong = 0;
    for (const FateRow &fate : kFates) {
        const fs::path home = madeHome(where / std::to_string(&fate - kFates));
        setenv("HOME", home.c_str(), 1);
        const QByteArray alias = aliasOf(home / "inner/item");
        fate.happens(home);
        const std::string expected = fate.then ? (home / fate.then).string() : statusText(fnfErr);
        if (resolved(alias) == expected)
            continue;
        ++wrong;
        std::printf("%s: \"%s\", not \"%s\"\n", fate.what, resolved(alias).c_str(),
                    expected.c_str());
    }
    return wrong;
}

/// Resolves aliases in the folder @p where as the current user and as nobody.
void expectNoWrongFate(const std::string &where) {
    EXPECT_EQ(runForked([&] { return wrongFates(where); }), 0);
    const std::string nobodys = where + "/nobody's";
    fs::create_directory(nobodys);
    fs::permissions(nobodys, fs::perms::all);
    EXPECT_EQ(runAsNobody([&] { return wrongFates(nobodys); }), 0);
}

TEST(Aliases, LeadToTheItemWhateverHappensToIt) {
    const TemporaryFolder folder;
    fs::permissions(folder.path(), fs::perms::all);
    expectNoWrongFate(folder.path());
}

TEST(Aliases, LeadToTheItemOnEveryFileSystem) {
    for (const char *const type : {"ext4", "tmpfs", "xfs", "btrfs", "ramfs"}) {
        const MountedFolder mounted(type);
        if (!mounted.failureReason().empty()) {
            std::printf("skipped: %s\n", mounted.failureReason().c_str());
            continue;
        }
        SCOPED_TRACE(type);
        expectNoWrongFate(mounted.path());
    }
}

TEST(Aliases, FollowAVolumeToAnotherMountPoint) {
    const MountedFolder mounted("ext4");
    if (!mounted.failureReason().empty())
        GTEST_SKIP() << mounted.failureReason();
    fs::create_directory(mounted.at("folder"));
    raw::write(mounted.at("folder/item"), "content");
    const QByteArray alias = aliasOf(mounted.at("folder/item"));
    const QByteArray aliasOfTop = aliasOf(mounted.path());
    const TemporaryFolder elsewhere;
    const std::string moved = elsewhere.folder("moved");
    ASSERT_EQ(runProcess({"mount", "--move", mounted.path(), moved}).status, 0);
    EXPECT_EQ(resolved(alias), moved + "/folder/item");
    EXPECT_EQ(resolved(aliasOfTop), moved);
    (void)runProcess({"umount", "-l", moved});
}

TEST(Aliases, SearchTheVolumeWhereverItIsMounted) {
    const MountedFolder mounted("ext4");
    if (!mounted.failureReason().empty())
        GTEST_SKIP() << mounted.failureReason();
    raw::write(mounted.at("item"), "content");
    fs::permissions(mounted.path(), fs::perms::all);
    const QByteArray alias = aliasOf(mounted.at("item"));
    fs::create_directory(mounted.at("inner"));
    fs::rename(mounted.at("item"), mounted.at("inner/new"));
    const TemporaryFolder elsewhere;
    fs::permissions(elsewhere.path(), fs::perms::all);
    const std::string moved = elsewhere.folder("moved");
    ASSERT_EQ(runProcess({"mount", "--move", mounted.path(), moved}).status, 0);
    EXPECT_EQ(runAsNobody([&] { return resolved(alias) == moved + "/inner/new" ? 0 : 1; }), 0);
    (void)runProcess({"umount", "-l", moved});
}

TEST(Aliases, LeadThroughLayeredAndNestedMounts) {
    const struct {
        const char *what;
        const char *type;
        const char *setUp; ///< commands in the mounted folder; they make "from/item" and "to"
    } rows[] = {
        {"an overlay copies at the first write", "tmpfs",
         "mkdir -p lower/from lower/to upper work all && echo > lower/from/item &&"
         " mount -t overlay o -o lowerdir=lower,upperdir=upper,workdir=work all &&"
         " ln -s all/from from && ln -s all/to to"},
        {"a nested subvolume", "btrfs",
         "btrfs -q subvolume create sub && mkdir sub/from sub/to && echo > sub/from/item &&"
         " ln -s sub/from from && ln -s sub/to to"},
        {"a bind mount that does not show the new place", "ext4",
         "mkdir -p hidden/from to from && echo > hidden/from/item &&"
         " mount --bind hidden/from from"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        const MountedFolder mounted(row.type);
        const ProcessResult ready =
            runProcess({"sh", "-c", "cd " + mounted.path() + " && " + row.setUp});
        if (!mounted.failureReason().empty() || ready.status != 0) {
            std::printf("skipped: %s%s\n", mounted.failureReason().c_str(),
                        ready.errorOutput.c_str());
            continue;
        }
        const FSRef ref = refTo(mounted.at("from/item"));
        const QByteArray alias = aliasOf(mounted.at("from/item"));
        raw::write(mounted.at("from/item"), "changed");
        QByteArray path;
        EXPECT_EQ(FSRefMakePath(ref, &path), noErr);
        EXPECT_EQ(path, mounted.at("from/item").c_str());
        const std::string source = fs::exists(mounted.at("hidden")) ? "hidden/from" : "from";
        fs::rename(mounted.at(source + "/item"), mounted.at("to/moved"));
        EXPECT_EQ(resolved(alias), fs::canonical(mounted.at("to")) / "moved");
        (void)runProcess({"umount", "-l", mounted.at("from")});
        (void)runProcess({"umount", "-l", mounted.at("all")});
    }
}

TEST(Aliases, LeadToEveryKindOfItem) {
    const TemporaryFolder folder;
    (void)folder.file("file");
    const std::string names[] = {folder.folder("folder"), folder.fifo("fifo"),
                                 folder.link("link", "file"), folder.file("\xFF\xC3\n"),
                                 folder.file(std::string(255, 'n'))};
    for (const std::string &path : names)
        EXPECT_EQ(resolved(aliasOf(path)), path);
    EXPECT_EQ(resolved(aliasOf("/")), "/");
    EXPECT_EQ(resolved(aliasOf("/dev/null")), "/dev/null");
    // Through a link: the path as given; after the real folder was moved, the real path.
    const std::string real = folder.folder("real");
    raw::write(real + "/item", "");
    const QByteArray alias = aliasOf(folder.link("way", "real") + "/item");
    EXPECT_EQ(resolved(alias), folder.at("way/item"));
    fs::rename(real, folder.at("moved"));
    EXPECT_EQ(resolved(alias), folder.at("moved/item"));
    // A reference can lead to any path, but FSRefMakePath() returns none above 1,024 bytes.
    std::string deep = folder.path();
    while (deep.size() < 1100)
        fs::create_directory(deep += "/" + std::string(100, 'd'));
    FSRef target;
    QByteArray path;
    EXPECT_EQ(FSResolveAlias(aliasOf(deep), &target), noErr);
    EXPECT_EQ(target.path, deep.c_str());
    EXPECT_EQ(FSRefMakePath(target, &path), fileBoundsErr);
}

TEST(Aliases, ForeignAndDamagedRecordsAreRefused) {
    const TemporaryFolder folder;
    const QByteArray good = aliasOf(folder.file("item"));
    FSRef target;
    for (qsizetype length = 0; length < good.size(); ++length) {
        const OSStatus status = FSResolveAlias(good.first(length), &target);
        ASSERT_NE(status, memFullErr);
    }
    EXPECT_EQ(FSResolveAlias("", &target), mapReadErr);
    EXPECT_EQ(FSResolveAlias("not a record of ours", &target), mapReadErr);
    EXPECT_EQ(FSResolveAlias(good.first(good.size() - 1), &target), mapReadErr);
    QByteArray later = good;
    later[5] = 2; // the version
    EXPECT_EQ(FSResolveAlias(later, &target), mapReadErr);
    EXPECT_EQ(FSResolveAlias(good + QByteArray::fromHex("7777000000026869"), &target), noErr)
        << "fields of later versions are skipped";
    EXPECT_EQ(AliasRecord::parse(good)->toBytes(), good);
}

TEST(References, FollowARenamedItemAndFailIfItIsGone) {
    const TemporaryFolder folder;
    setenv("HOME", folder.path().c_str(), 1);
    FSRef ref = refTo(folder.file("item"));
    fs::rename(folder.at("item"), folder.at("renamed"));
    QByteArray path;
    EXPECT_EQ(FSRefMakePath(ref, &path), noErr);
    EXPECT_EQ(path, folder.at("renamed").c_str());
    (void)folder.folder("deep");
    fs::rename(folder.at("renamed"), folder.at("deep/item"));
    EXPECT_EQ(FSRefMakePath(ref, &path), noErr);
    EXPECT_EQ(path, folder.at("deep/item").c_str());
    fs::remove(folder.at("deep/item"));
    (void)folder.file("item");
    EXPECT_EQ(FSRefMakePath(ref, &path), fnfErr) << "a new item at the path does not count";
    EXPECT_EQ(FSPathMakeRef("", &ref), bdNamErr);
    EXPECT_EQ(FSPathMakeRef(folder.at("item/x").c_str(), &ref), fnfErr);
    fs::current_path(folder.path());
    EXPECT_EQ(FSPathMakeRef("deep", &ref), noErr);
    EXPECT_EQ(ref.path, folder.at("deep").c_str());
    for (const char *const itself : {".", "./", "deep/..", "deep/../."}) {
        EXPECT_EQ(FSPathMakeRef(itself, &ref), noErr) << itself;
        EXPECT_EQ(ref.path, folder.path().c_str()) << itself << " becomes the folder's path";
    }
    fs::current_path("/");
}

TEST(References, FollowItemsBehindALink) {
    const MountedFolder mounted("tmpfs");
    if (!mounted.failureReason().empty())
        GTEST_SKIP() << mounted.failureReason();
    fs::create_directories(mounted.at("home/deep"));
    raw::write(mounted.at("home/item"), "");
    for (const char *const name : {"", "home", "home/deep"})
        fs::permissions(mounted.at(name), fs::perms::all);
    const TemporaryFolder elsewhere; // on another volume
    fs::permissions(elsewhere.path(), fs::perms::all);
    const std::string link = elsewhere.link("link", mounted.at("home"));
    const auto follows = [&] {
        setenv("HOME", link.c_str(), 1);
        const FSRef ref = refTo(link + "/item");
        QByteArray path;
        fs::rename(mounted.at("home/item"), mounted.at("home/new"));
        EXPECT_EQ(FSRefMakePath(ref, &path), noErr);
        EXPECT_EQ(path, mounted.at("home/new").c_str());
        fs::rename(mounted.at("home/new"), mounted.at("home/deep/item"));
        EXPECT_EQ(FSRefMakePath(ref, &path), noErr);
        EXPECT_EQ(path, mounted.at("home/deep/item").c_str());
        fs::rename(mounted.at("home/deep/item"), mounted.at("home/item"));
        return ::testing::Test::HasFailure() ? 1 : 0;
    };
    EXPECT_EQ(runForked(follows), 0);
    EXPECT_EQ(runAsNobody(follows), 0);
}

} // namespace
