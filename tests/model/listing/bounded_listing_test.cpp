// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// Listings of items that were made to stall them.
#include "core/record_tree.h"
#include "model/item/ListedMetadata.h"
#include "model/listing/ListedKinds.h"
#include "platform/aliases/Aliases.h"
#include "platform/aliases/AliasFileFormat.h"
#include "platform/formats/AliasRecord.h"
#include "platform/formats/ResourceMap.h"
#include "platform/metadata/MetadataStore.h"
#include "tests/model/items.h"
#include "tests/model/SpecialItems.h"
#include "tests/platform/metadata/attributes.h"
#include "tests/support/MountedFolder.h"
#include "tests/support/UnresponsiveMount.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <memory>

namespace {

namespace fs = std::filesystem;
using namespace MWCore;

/// A clock that advances by a millisecond at each call.
int64_t ticking() {
    constexpr int64_t kMillisecond = 1'000'000;
    static int64_t now = 0;
    return now += kMillisecond;
}

int64_t setTime = 0;
int64_t givenTime() {
    return setTime;
}

TEST(TimeBudgets, AllowAFixedTimeAndAShareOfTheRest) {
    setTime = 1000;
    TimeBudget timeBudget({.fixed = 10, .share = 50}, givenTime);
    const auto use = [&timeBudget](int64_t time) {
        const TimeBudget::Use granted(timeBudget);
        setTime += time;
        return granted.isGranted();
    };
    EXPECT_TRUE(use(8));
    EXPECT_TRUE(use(4)) << "two are left";
    EXPECT_FALSE(use(1)) << "which counts as other time";
    EXPECT_FALSE(timeBudget.isLeft());
    setTime += 4; // five more of other time: half may be used, and two were
    EXPECT_FALSE(timeBudget.isLeft());
    ++setTime;
    EXPECT_TRUE(timeBudget.isLeft());
    {
        const TimeBudget::Use granted(timeBudget);
        EXPECT_TRUE(timeBudget.isLeft());
        ++setTime;
        EXPECT_FALSE(timeBudget.isLeft()) << "while it is used";
    }
    EXPECT_FALSE(TimeBudget({}, givenTime).isLeft());
}

/// The kinds in a folder by name, from a listing within @p limits.
std::map<std::string, Classification> kindsIn(const std::string &folder,
                                              TimeBudget::Limits limits) {
    ListedKinds kinds(limits);
    const RecordTree record(
        mfs_fso_get_local_fso_visiting(folder.c_str(), &ListedKinds::visit, &kinds));
    std::map<std::string, Classification> found;
    for (const int32_t list : {MFS_FILES, MFS_SUBDIRECTORIES}) {
        const int32_t count = list == MFS_FILES ? mfs_fso_file_count(record.get())
                                                : mfs_fso_subdirectory_count(record.get());
        for (int32_t index = 0; index < count; ++index) {
            const mfs_fso *const child = mfs_fso_get_subitem_at_index(record.get(), index, list);
            found[child->name] = kinds.of(child, index);
        }
    }
    return found;
}

TEST(BoundedListings, ClassifyWithoutInspectionIfTheBudgetIsUsedUp) {
    const std::map<std::string, MXItemKind> other = {
        {"AppDir", MXItemKindFolder},          {"labelled.AppImage", MXItemKindFile},
        {"executable image", MXItemKindFile},  {"image for its owner", MXItemKindFile},
        {"image for a group", MXItemKindFile}, {"starts.desktop", MXItemKindFile},
        {"sidecar says APPL", MXItemKindFile}, {"to folder.desktop", MXItemKindFile},
        {"to file.desktop", MXItemKindFile},   {"to package.desktop", MXItemKindFile},
        {"to alias.desktop", MXItemKindFile},  {"to application.desktop", MXItemKindFile},
        {"to image.desktop", MXItemKindFile},  {"to sidecar.desktop", MXItemKindFile},
        {"flag alone", MXItemKindAlias}, // not inspected for a record
    };
    const SpecialItems items;
    const auto all = kindsIn(items.path(), InspectionContext::kUnlimited);
    const auto unseen = kindsIn(items.path(), {});
    for (const SpecialItems::Row &row : SpecialItems::rows()) {
        EXPECT_EQ(all.at(row.name).kind, row.kind) << row.name;
        const auto changed = other.find(row.name);
        EXPECT_EQ(unseen.at(row.name).kind, changed == other.end() ? row.kind : changed->second)
            << row.name;
    }
    EXPECT_EQ(unseen.at("finder alias").targetKind, MXItemKindUnknown);
    EXPECT_EQ(unseen.at("link to folder").targetKind, MXItemKindFolder);
    const auto listed = itemAt(items.path());
    EXPECT_EQ(child(listed, "AppDir")->fsoKind(), MXItemKindApplication);
}

TEST(BoundedListings, ReadMetadataUntilTheBudgetIsUsedUp) {
    const SpecialItems items;
    const auto listed = itemAt(items.path());
    TimeBudget timeBudget(InspectionContext::kUnlimited);
    TimeBudget none({});
    ListedMetadata metadata(*listed, timeBudget);
    ListedMetadata hurried(*listed, none);
    using Part = ItemMetadata::Part;
    for (const auto &item : listed->visibleItems()) {
        const std::string name = item->name().toStdString();
        const auto known = metadata.read(*item);
        EXPECT_EQ(known.finderInfo(), item->metadata().finderInfo()) << name;
        EXPECT_EQ(known.type(), item->type()) << name;
        const bool hasSidecar = fs::exists(items.at("._" + name));
        EXPECT_EQ(hurried.read(*item, Part::FinderInfo).status(Part::FinderInfo),
                  hasSidecar ? fileBoundsErr : noErr)
            << name;
    }
    EXPECT_EQ(metadata.read(*MXFileSystemObject::init()).status(Part::Inode), paramErr);
}

TEST(BoundedListings, DoNotReadHugeFoldersToFindApplications) {
    const TemporaryFolder folder;
    (void)folder.folder("AppDir");
    (void)folder.file("AppDir/AppRun");
    (void)folder.file("AppDir/a.desktop");
    EXPECT_EQ(kindsIn(folder.path(), InspectionContext::kUnlimited).at("AppDir").kind,
              MXItemKindApplication);
    for (int number = 0; number < 1000; ++number)
        (void)folder.file("AppDir/" + std::string(200, 'n') + std::to_string(number));
    EXPECT_EQ(kindsIn(folder.path(), InspectionContext::kUnlimited).at("AppDir").kind,
              MXItemKindFolder);
    EXPECT_EQ(MXFileSystemObject::typeForItemAtPath(text(folder.at("AppDir")), nullptr, nullptr),
              MXItemKindApplication)
        << "when it is asked for";
}

TEST(BoundedListings, StopInTheMiddleOfALongChain) {
    const TemporaryFolder folder;
    for (int number = 0; number < 30; ++number)
        raw::write(folder.at(std::to_string(number) + ".desktop"),
                   ("[Desktop Entry]\nType=Link\nURL=file://" +
                    folder.at(number == 0 ? "end" : std::to_string(number - 1) + ".desktop"))
                       .c_str());
    (void)folder.file("end");
    constexpr int64_t kMilliseconds = 1'000'000;
    TimeBudget timeBudget({.fixed = 20 * kMilliseconds, .share = 0}, ticking);
    ListedAliases aliases(timeBudget);
    QByteArray target;
    EXPECT_EQ(aliases.resolve(folder.at("2.desktop").c_str(), &target), noErr);
    EXPECT_EQ(target, folder.at("end").c_str());
    EXPECT_EQ(aliases.resolve(folder.at("29.desktop").c_str(), &target), fileBoundsErr);
    EXPECT_EQ(aliases.resolve(folder.at("0.desktop").c_str(), &target), fileBoundsErr)
        << "nothing is left";
}

QByteArray silentRecord(const std::string &mountPoint) {
    AliasRecord record;
    record.path = record.realPath = (mountPoint + "/item").c_str();
    record.identity.inode = 7;
    record.fileSystemType = "fuse";
    record.source = "/dev/sdx";
    record.mountPointLength = static_cast<uint32_t>(mountPoint.size());
    return record.toBytes();
}

void writeEntry(const std::string &path, const QByteArray &keys) {
    raw::write(path, "[Desktop Entry]\nType=Link\n" + keys + '\n');
}

TEST(BoundedListings, DoNotWaitForTargetsOfAliases) {
    const MountedFolder home("tmpfs");
    if (!home.failureReason().empty())
        GTEST_SKIP() << home.failureReason();
    for (const char *const name : {"silent", "listed"})
        fs::create_directory(home.at(name));
    fs::create_directory_symlink("silent", home.at("link"));
    fs::create_symlink("link/item", home.at("link to item"));
    const std::string listed = home.at("listed/");
    const auto address = [&home](const std::string &name) {
        return QByteArray::fromStdString("URL=file://" + home.at(name));
    };
    const QByteArray record = silentRecord(home.at("silent"));
    writeEntry(listed + "address.desktop", address("silent/item"));
    writeEntry(listed + "mount point.desktop", address("silent"));
    writeEntry(listed + "way.desktop", address("link/item"));
    writeEntry(listed + "link.desktop", address("link%20to%20item"));
    writeEntry(listed + "record.desktop", address("elsewhere") + "\n" +
                                              kAliasRecordKey.toByteArray() + "=" +
                                              record.toBase64());
    writeEntry(listed + "chain.desktop", address("listed/way.desktop"));
    ResourceMap map;
    map.put({kAliasResource, 0, std::nullopt, 0, record});
    raw::write(listed + "finder", "");
    FinderInfo info;
    info.flags = kIsAlias;
    ASSERT_EQ(writeFinderInfo((listed + "finder").c_str(), info), noErr);
    ASSERT_EQ(writeResourceFork((listed + "finder").c_str(), *map.toBytes()), noErr);
    const UnresponsiveMount silent(home.at("silent"));
    if (!silent.failureReason().empty())
        GTEST_SKIP() << silent.failureReason();
    EXPECT_EQ(runWithTimeout([&listed] {
                  const auto folder = itemAt(listed);
                  for (const auto &item : folder->visibleItems())
                      EXPECT_TRUE(
                          item->cstruct()->name[0] == '.' ||
                          (item->isAlias() && item->aliasOrLinkTargetKind() == MXItemKindUnknown))
                          << item->cstruct()->name << item->fsoKind();
                  return folder->totalItems() >= 7 && !::testing::Test::HasFailure() ? 0 : 1;
              }),
              0);
}

} // namespace
