// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/catalogue/ItemMetadata.h"
#include "tests/platform/changes/SystemCalls.h"
#include "tests/platform/metadata/attributes.h"
#include "tests/platform/references.h"
#include "tests/platform/samples.h"
#include "tests/support/MountedFolder.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <functional>
#include <map>

#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;
using namespace MWCore;
using Part = ItemMetadata::Part;

constexpr uint16_t kFlags = kIsInvisible | 6 << 1; // the label number is 6

/// The statuses of all parts in their order.
std::array<OSStatus, 4> statusesOf(const ItemMetadata &metadata) {
    return {metadata.status(Part::Inode), metadata.status(Part::DateCreated),
            metadata.status(Part::FinderInfo), metadata.status(Part::ResourceFork)};
}

/// How often each system call is made meanwhile.
std::map<std::string, int> callsOf(const std::function<void()> &work) {
    std::map<std::string, int> calls;
    const SystemCalls counted([&calls](const std::string &call) { return ++calls[call], 0; });
    work();
    return calls;
}

TEST(ItemMetadata, IsReadWithOneLookAndKept) {
    const TemporaryFolder folder;
    const std::string item = folder.file("item", 5000);
    raw::write(folder.at("._item"), samples::sidecar(kFlags));
    struct stat node = {};
    ASSERT_EQ(stat(item.c_str(), &node), 0);
    ItemMetadata metadata;
    FinderInfo info;
    const auto calls = callsOf([&] { metadata = ItemMetadata::read(item.c_str()); });
    auto expected = callsOf([&] { EXPECT_EQ(readFinderInfo(item.c_str(), &info), noErr); });
    expected["statx"] = 1;
    EXPECT_EQ(calls, expected) << "the forks are free";
    fs::remove_all(item);
    fs::remove(folder.at("._item"));
    EXPECT_EQ(statusesOf(metadata), std::to_array({noErr, noErr, noErr, noErr}));
    EXPECT_EQ(timeFrom(*metadata.dateModified()).tv_sec, node.st_mtim.tv_sec);
    EXPECT_EQ(metadata.dataForkSize()->logical, node.st_size);
    EXPECT_EQ(metadata.dataForkSize()->physical, node.st_blocks * 512);
    EXPECT_EQ(metadata.resourceForkSize()->logical, samples::resourceFork().size());
    EXPECT_EQ(metadata.type(), 0x54455854U);    // TEXT
    EXPECT_EQ(metadata.creator(), 0x74747874U); // ttxt
    EXPECT_EQ(metadata.labelNumber(), 6);
    EXPECT_TRUE(metadata.isInvisible());
    EXPECT_FALSE(metadata.isLocked());
}

TEST(ItemMetadata, FailsPartByPart) {
    const TemporaryFolder folder;
    const std::string item = folder.file("item");
    const QByteArray path = item.c_str();
    EXPECT_EQ(statusesOf(ItemMetadata::read(folder.at("gone").c_str())),
              std::to_array({fnfErr, fnfErr, fnfErr, fnfErr}));
    EXPECT_EQ(statusesOf(ItemMetadata::read(path, Part::FinderInfo)),
              std::to_array({paramErr, paramErr, noErr, paramErr}));
    {
        const SystemCalls refused(SystemCalls::refusing("llistxattr", EACCES));
        EXPECT_EQ(statusesOf(ItemMetadata::read(path)),
                  std::to_array({noErr, noErr, permErr, permErr}));
    }
    const FSRef ref = refTo(item);
    fs::rename(item, folder.at("renamed"));
    raw::write(folder.at("._renamed"), samples::sidecar(kFlags).first(40)); // damaged
    EXPECT_EQ(statusesOf(ItemMetadata::read(ref)),
              std::to_array({noErr, noErr, mapReadErr, mapReadErr}));
    raw::setAttribute(folder.at("renamed"), "user.com.apple.FinderInfo",
                      samples::finderInfo(kFlags));
    const ItemMetadata metadata = ItemMetadata::read(ref);
    EXPECT_EQ(statusesOf(metadata), std::to_array({noErr, noErr, noErr, mapReadErr}));
    EXPECT_EQ(metadata.labelNumber(), 6);
    EXPECT_EQ(metadata.resourceForkSize(), std::nullopt);
    const MountedFolder withoutDates("ramfs");
    if (!withoutDates.failureReason().empty())
        GTEST_SKIP() << withoutDates.failureReason();
    EXPECT_EQ(statusesOf(ItemMetadata::read(withoutDates.at("").c_str())),
              std::to_array({noErr, errFSOperationNotSupported, noErr, noErr}));
}

TEST(ItemMetadata, IsReadWithinATimeBudget) {
    const TemporaryFolder folder;
    const struct Row {
        const char *name;
        const char *attribute;
        QByteArray value;
        Sidecars sidecars;
        OSStatus finderInfo;
        OSStatus resourceFork;
    } rows[] = {
        {"nothing", "user.other", "x", Sidecars::Absent, noErr, noErr},
        {"plain", "user.com.apple.FinderInfo", samples::finderInfo(kFlags), Sidecars::Absent, noErr,
         noErr},
        {"long", "user.org.netatalk.Metadata", samples::netatalkRecord(kFlags), Sidecars::Absent,
         fileBoundsErr, noErr},
        {"fork", "user.com.apple.ResourceFork", "fork", Sidecars::Absent, noErr, fileBoundsErr},
        {"perhaps a sidecar", "user.other", "x", Sidecars::MayExist, fileBoundsErr, fileBoundsErr},
    };
    for (const Row &row : rows) {
        const QByteArray path = folder.file(row.name).c_str();
        ASSERT_TRUE(raw::setAttribute(path.toStdString(), row.attribute, row.value));
        TimeBudget none({});
        TimeBudget enough({.fixed = INT64_MAX / 2});
        const auto hurried = ItemMetadata::readWithin(none, path, row.sidecars);
        EXPECT_EQ(statusesOf(hurried),
                  std::to_array({noErr, noErr, row.finderInfo, row.resourceFork}))
            << row.name;
        const auto whole = ItemMetadata::readWithin(enough, path, row.sidecars);
        EXPECT_EQ(whole.finderInfo(), ItemMetadata::read(path).finderInfo()) << row.name;
        EXPECT_EQ(whole.resourceForkSize()->logical, row.value == "fork" ? 4 : 0) << row.name;
        EXPECT_EQ(hurried.labelNumber(), row.finderInfo == noErr ? whole.labelNumber() : 0);
    }
}

} // namespace
