// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// Resolution next to a file system whose program never answers.
#include "platform/aliases/Aliases.h"
#include "platform/files/PathParts.h"
#include "platform/references/AliasResolution.h"
#include "tests/platform/metadata/attributes.h"
#include "tests/platform/references.h"
#include "tests/support/MountedFolder.h"
#include "tests/support/Process.h"
#include "tests/support/UnresponsiveMount.h"

#include <gtest/gtest.h>

#include <filesystem>

#include <sys/mount.h>

namespace {

namespace fs = std::filesystem;
using namespace MWCore;

/// What is set up in a new folder "home" before and after the alias is made, where the unresponsive
/// file system is mounted then, and where the alias leads. Paths are relative to "home".
struct Row {
    const char *what;
    void (*before)(const std::string &home);
    void (*after)(const std::string &home);
    const char *silent;
    const char *made;  ///< the item of which the alias is made
    const char *leads; ///< null: nowhere
};

void mountRamfs(const std::string &path) {
    EXPECT_EQ(mount("none", path.c_str(), "ramfs", 0, nullptr), 0);
}
void nothing(const std::string & /*home*/) {}

constexpr Row kRows[] = {
    {"renamed", nothing,
     [](const std::string &home) { fs::rename(home + "/volume/item", home + "/volume/new"); },
     "silent", "volume/item", "volume/new"},
    {"moved, and found by a search next to it", nothing,
     [](const std::string &home) { fs::rename(home + "/volume/item", home + "/z/item"); }, "silent",
     "volume/item", "z/item"},
    {"deleted", nothing, [](const std::string &home) { fs::remove(home + "/volume/item"); },
     "silent", "volume/item", nullptr},
    {"its volume ejected, the unresponsive one in its place",
     [](const std::string &home) { mountRamfs(home + "/volume"); },
     [](const std::string &home) { EXPECT_EQ(umount((home + "/volume").c_str()), 0); }, "volume",
     "volume/item", nullptr},
    {"its volume hidden by the unresponsive one",
     [](const std::string &home) {
         mountRamfs(home + "/outer");
         fs::create_directory(home + "/outer/volume");
         mountRamfs(home + "/outer/volume");
     },
     nothing, "outer", "outer/volume/item", nullptr},
    {"through a link that now leads to the unresponsive one",
     [](const std::string &home) { fs::create_directory_symlink("volume", home + "/link"); },
     [](const std::string &home) {
         fs::remove(home + "/link");
         fs::create_directory_symlink("silent", home + "/link");
     },
     "silent", "link/item", "volume/item"},
};

TEST(UnresponsiveMounts, DoNotBlockASearchElsewhere) {
    for (const Row &row : kRows) {
        SCOPED_TRACE(row.what);
        const MountedFolder home("tmpfs");
        if (!home.failureReason().empty())
            GTEST_SKIP() << home.failureReason();
        for (const char *const name : {"volume", "outer", "silent", "z", "a", "a/silent"})
            fs::create_directory(home.at(name));
        fs::permissions(home.path(), fs::perms::all);
        row.before(home.path());
        raw::write(home.at(row.made), "");
        const QByteArray alias = aliasOf(home.at(row.made));
        const FSRef ref = refTo(home.at(row.made));
        AliasRecord weak = AliasRecord::parse(alias).value_or(AliasRecord());
        weak.identity.handle.clear(); // by which the kernel would find it without a search
        weak.fileSystemType.clear();  // as in an older record
        weak.source.clear();
        row.after(home.path());
        const UnresponsiveMount silent(home.at(row.silent));
        const UnresponsiveMount another(home.at("a/silent"), "elsewhere");
        if (!silent.failureReason().empty())
            GTEST_SKIP() << silent.failureReason();
        const std::string expected = row.leads ? home.at(row.leads) : statusText(fnfErr);
        setenv("HOME", home.path().c_str(), 1);
        EXPECT_EQ(runWithTimeout([&] { return resolved(alias) == expected ? 0 : 1; }), 0);
        const bool liesBelow = std::string(row.made).starts_with(row.silent);
        EXPECT_EQ(runWithTimeout([&] {
                      // The file system of an older record is taken to be where its path leads.
                      return liesBelow || resolved(weak.toBytes()) == expected ? 0 : 1;
                  }),
                  0);
        EXPECT_EQ(runWithTimeout([&] {
                      QByteArray path;
                      if (liesBelow || std::string(row.made).starts_with("link"))
                          return 0; // its path leads to the unresponsive mount
                      const OSStatus status = FSRefMakePath(ref, &path);
                      return (status == noErr ? path.toStdString() : statusText(status)) == expected
                                 ? 0
                                 : 1;
                  }),
                  0);
    }
}

TEST(UnresponsiveMounts, OfTheSameTypeAreDistinguishedByTheMountTable) {
    const MountedFolder home("tmpfs");
    if (!home.failureReason().empty())
        GTEST_SKIP() << home.failureReason();
    fs::create_directory(home.at("silent"));
    const UnresponsiveMount silent(home.at("silent"), "server");
    if (!silent.failureReason().empty())
        GTEST_SKIP() << silent.failureReason();
    const struct {
        const char *what;
        const char *type;
        const char *source;
        const char *path;
    } rows[] = {
        {"of another server", "fuse", "another server", "silent/item"},
        {"of another type of program", "fuse.other", "server", "silent/item"},
        {"of the same server at another place", "fuse", "server", "elsewhere/item"},
        {"of a network", "nfs4", "server", "silent/item"},
    };
    for (const auto &row : rows) {
        AliasRecord record;
        record.path = record.realPath = home.at(row.path).c_str();
        record.identity.inode = 1;
        record.fileSystemType = row.type;
        record.source = row.source;
        record.mountPointLength = static_cast<uint32_t>(PathParts(record.path).parent.size());
        EXPECT_EQ(runWithTimeout(
                      [&] { return resolved(record.toBytes()) == statusText(fnfErr) ? 0 : 1; }),
                  0)
            << row.what;
    }
}

} // namespace
