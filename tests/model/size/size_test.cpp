// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/text/format_size.h"
#include "tests/model/sizes.h"
#include "tests/model/SpecialItems.h"
#include "tests/support/LoggedMessages.h"
#include "tests/support/MountedFolder.h"
#include "tests/support/texts.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <filesystem>
#include <fstream>

#include <sys/stat.h>
#include <sys/statvfs.h>

namespace {

namespace fs = std::filesystem;
using namespace MWCore;

TEST(Size, ShortTexts) {
    const struct {
        uint64_t size;
        const char *text;
    } rows[] = {
        {0, "0"},
        {500, "500"},
        {1023, "1023"},
        {1024, "1KB"},
        {1100, "1KB"},
        {1024 + 499, "1KB"},
        {1024 + 500, "1.5KB"},
        {1536, "1.5KB"},
        {2047, "1.10KB"},
        {0xFFFFF, "1023.10KB"},
        {0x100000, "1MB"},
        {1'572'864, "1.524MB"},
        {0x3FFFFFFF, "1023.1048MB"},
        {0x40000000, "1GB"},
        {0x40000000 + 49'999'999, "1GB"},
        {0x40000000 + 50'000'000, "1.5GB"},
        {0xFFFFFFFFFF, "1023.107GB"},
        {0x10000000000, "1TB"},
        {UINT64_MAX, "16777215.1099TB"},
        {UINT64_MAX - 0xFFFFFFFFFF, "16777215TB"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(takeText(format_size(row.size)), row.text) << row.size;
}

TEST(Size, TextsOfAPanel) {
    MXFSOSizeRecord record;
    record.dataForkSize = 1'234'567;
    record.physicalDataForkSize = 1'572'864;
    record.resourceForkSize = 999;
    record.physicalResourceForkSize = 4096;
    record.totalSize = uint64_t(3) << 40;
    record.volumeFreeBytes = uint64_t(1) << 40;
    record.physicalTotalSize = 2047;
    record.containedItemCount = 1'001'002;
    record.containedFileCount = 1'000'000;
    record.containedFolderCount = 1002;
    record.hiddenItemCount = 7;
    const auto size = MXFileSystemObjectSize::initWithLocalFileSize(record);
    EXPECT_EQ(size->dataGetInfoString(), "1.524MB on disk. ( 1,234,567 bytes )");
    EXPECT_EQ(size->resourceGetInfoString(), "4KB on disk. ( 999 bytes )");
    EXPECT_EQ(size->totalSizeGetInfoString(), "1.10KB on disk. ( 3,298,534,883,328 bytes )");
    EXPECT_EQ(size->containsGetInfo(), "1,000,000 Files. 1,002 Folders. ( 7 hidden )");
    EXPECT_EQ(size->capacityGetInfoString(), "3TB");
    EXPECT_EQ(size->availableGetInfoString(), "1TB");
    EXPECT_EQ(size->usedGetInfoString(), "2TB");
    EXPECT_EQ(size->containedItemCount(), 1'001'002U);
    const char *const byKey[] = {"1.185MB", "1.524MB", "999", "4KB", "3TB", "1.10KB"};
    for (int32_t key = 0; key < 6; ++key)
        EXPECT_EQ(size->formattedStringForKey(key), byKey[key]);
    for (const int32_t key : {-1, 6, INT32_MIN})
        EXPECT_EQ(size->formattedStringForKey(key), "Unknown Key");
    EXPECT_EQ(size->_commaDelimitedSize(0), "0");
    EXPECT_EQ(size->_commaDelimitedSize(123'456), "123,456");
    EXPECT_EQ(size->_commaDelimitedSize(UINT64_MAX), "18,446,744,073,709,551,616");
    EXPECT_EQ(MXFileSystemObjectSize::initWithLocalFileSize()->containsGetInfo(), "No items");
}

TEST(Size, ItemsThatAreNotFolders) {
    const TemporaryFolder folder;
    const std::string file = folder.file("file", 5000);
    folder.link("link", "file");
    folder.link("dead", "nowhere");
    folder.fifo("fifo");
    folder.folder("empty");
    folder.file(".hidden for the shell alone");
    const auto items = itemAt(folder.path());
    const auto link = child(items, "link")->sizeObject();
    EXPECT_EQ(link->dataForkSize(), 4U);
    EXPECT_EQ(link->totalSize(), 4U);
    EXPECT_EQ(link->physicalTotalSize(), 0U);
    struct stat item = {};
    ASSERT_EQ(stat(file.c_str(), &item), 0);
    const auto size = child(items, "file")->sizeObject();
    EXPECT_EQ(size->totalSize(), 5000U);
    EXPECT_EQ(size->physicalTotalSize(), uint64_t(item.st_blocks) * 512);
    EXPECT_EQ(size->containsGetInfo(), "No items");
    EXPECT_EQ(child(items, "file")->getLocalFileSize()->physicalTotalSize, 0U);
    for (const char *const name : {"dead", "fifo", "empty"})
        EXPECT_EQ(child(items, name)->sizeObject()->record(), MXFSOSizeRecord()) << name;
    EXPECT_EQ(child(items, "empty")->sizeObject()->containsGetInfo(), "No items");
    EXPECT_EQ(child(items, "dead")->measureSize()->unreadableCount, 0U);
    EXPECT_EQ(items->sizeObject()->containsGetInfo(), "5 Files. 1 Folders. ( 0 hidden )");
    EXPECT_FALSE(MXFileSystemObject::init()->sizeObject());
    const SpecialItems special;
    for (const char *const name : {"to file.desktop", "labelled.AppImage"})
        EXPECT_EQ(itemAt(special.at(name))->sizeObject()->dataForkSize(),
                  fs::file_size(special.at(name)));
    EXPECT_EQ(itemAt(special.at("Bundle.app"))->sizeObject()->containedItemCount(), 2U);
}

TEST(Size, IsCached) {
    const TemporaryFolder folder;
    folder.file("a", 1000);
    const auto item = itemAt(folder.path());
    const auto text = [&item] { return item->totalSizeFormattedAsString().value(); };
    EXPECT_TRUE(text().isNull()) << "at the first call";
    EXPECT_EQ(text(), "1000");
    const auto first = item->sizeObject();
    folder.file("b", 24);
    EXPECT_EQ(item->sizeObject(), first);
    item->invalidateCachedSize();
    EXPECT_EQ(item->sizeObject()->totalSize(), 1024U);
    EXPECT_EQ(first->totalSize(), 1000U) << "what was handed out stays";
    EXPECT_EQ(text(), "1000") << "deliberately never made anew";
}

TEST(Size, IsMeasuredAgainAfterAFailure) {
    const TemporaryFolder folder;
    const std::string file = folder.file("file", 7);
    const std::string gone = folder.file("gone");
    const auto item = itemAt(file);
    const auto goneItem = itemAt(gone);
    fs::remove(gone);
    folder.damagedSidecar("file");
    const LoggedMessages messages;
    EXPECT_FALSE(item->sizeObject());
    EXPECT_TRUE(item->totalSizeFormattedAsString().isMarker());
    EXPECT_EQ(messages.take(), QStringList(2, "mwcore: getLocalFileSize : Error Getting info"));
    fs::remove(folder.at("._file"));
    ASSERT_TRUE(item->sizeObject());
    EXPECT_EQ(item->sizeObject()->totalSize(), 7U);
    EXPECT_FALSE(goneItem->sizeObject());
    EXPECT_EQ(messages.take().value(2), "mwcore: getLocalFileSize : FSRef was null");
    EXPECT_FALSE(goneItem->getVolumeInformation());
    EXPECT_EQ(messages.take().value(2), "mwcore: getLocalFileSize : FSRef was null");
}

TEST(Size, IsNotCachedForAVolume) {
    const MountedFolder volume("tmpfs", "size=1m");
    if (!volume.failureReason().empty())
        GTEST_SKIP() << volume.failureReason();
    const auto item = itemAt(volume.path());
    ASSERT_TRUE(item->isVolume());
    struct statvfs status = {};
    ASSERT_EQ(statvfs(volume.path().c_str(), &status), 0);
    const auto empty = item->sizeObject();
    EXPECT_EQ(empty->totalSize(), 1U << 20);
    EXPECT_EQ(empty->record().volumeFreeBytes, status.f_bavail * status.f_frsize);
    EXPECT_EQ(empty->containedItemCount(), status.f_files - status.f_ffree);
    EXPECT_EQ(empty->record().containedFileCount, empty->containedItemCount());
    EXPECT_TRUE(item->totalSizeFormattedAsString().value().isNull());
    EXPECT_EQ(item->totalSizeFormattedAsString().value(), empty->usedGetInfoString());
    std::ofstream(volume.at("file")) << std::string(300'000, 'x');
    EXPECT_LT(item->sizeObject()->record().volumeFreeBytes, 800'000U);
    MXSizeOptions walk;
    walk.walksVolume = true;
    EXPECT_EQ(item->measureSize(walk)->record.totalSize, 300'000U);

    // Seen from outside, it is a mount point.
    const std::string outside = fs::path(volume.path()).parent_path();
    EXPECT_EQ(sumsOf(outside).totalSize, 300'000U);
    MXSizeOptions stay;
    stay.staysOnVolume = true;
    const auto measured =
        MXFileSystemObject::newFSOForLocalPath(text(outside), false)->measureSize(stay);
    EXPECT_EQ(measured->record.totalSize, 0U);
    EXPECT_EQ(measured->record.containedFolderCount, sumsOf(outside).containedFolderCount);
}

} // namespace
