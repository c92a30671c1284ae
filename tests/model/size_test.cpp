// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/private/Descriptor.h"
#include "model/size/format_size.h"
#include "platform/metadata/MetadataStore.h"
#include "tests/model/items.h"
#include "tests/model/SpecialItems.h"
#include "tests/support/LoggedMessages.h"
#include "tests/support/MountedFolder.h"
#include "tests/support/Process.h"
#include "tests/support/texts.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <random>
#include <thread>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/statvfs.h>
#include <sys/sysmacros.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace MWCore {

void PrintTo(const MXFSOSizeRecord &record, std::ostream *stream) {
    *stream << "data " << record.dataForkSize << " (" << record.physicalDataForkSize
            << "), resources " << record.resourceForkSize << " (" << record.physicalResourceForkSize
            << "), total " << record.totalSize << " (" << record.physicalTotalSize << "), "
            << record.containedFileCount << " files, " << record.containedFolderCount
            << " folders, " << record.hiddenItemCount << " hidden";
}

} // namespace MWCore

namespace {

namespace fs = std::filesystem;
using namespace MWCore;

MXFSOSizeRecord withTotals(MXFSOSizeRecord record) {
    record.totalSize = record.dataForkSize + record.resourceForkSize;
    record.physicalTotalSize = record.physicalDataForkSize + record.physicalResourceForkSize;
    record.containedItemCount = record.containedFileCount + record.containedFolderCount;
    return record;
}

/// The same sums from one object an entry.
MXFSOSizeRecord sumsOfObjects(const std::string &folder) {
    MXFSOSizeRecord sums;
    const auto skip = fs::directory_options::skip_permission_denied;
    for (auto at = fs::recursive_directory_iterator(folder, skip); at != end(at);) {
        struct stat attributes = {};
        const QString path = text(at->path());
        const bool isThere = lstat(at->path().c_str(), &attributes) == 0;
        if (isThere && S_ISDIR(attributes.st_mode)) {
            const auto item = MXFileSystemObject::newFSOForLocalPath(path, false);
            sums.hiddenItemCount += item && item->isInvisible();
            ++sums.containedFolderCount;
        } else {
            const auto item = MXFileSystemObject::newFSOForLocalPath(path);
            if (const auto own = item ? item->getLocalFileSize() : nullptr) {
                sums.dataForkSize += own->dataForkSize;
                sums.physicalDataForkSize += own->physicalDataForkSize;
                sums.resourceForkSize += own->resourceForkSize;
                sums.physicalResourceForkSize += own->physicalResourceForkSize;
            }
            sums.hiddenItemCount += item && item->isInvisible();
            ++sums.containedFileCount;
        }
        std::error_code ignored; // of a folder whose entries cannot be examined
        at.increment(ignored);
    }
    return withTotals(sums);
}

/// The same sums from find(1), of a tree without metadata.
MXFSOSizeRecord sumsOfFind(const std::string &folder, const ProcessOptions &options = {}) {
    MXFSOSizeRecord sums;
    std::istringstream found(
        runProcess({"find", folder, "-mindepth", "1", "-printf", "%y %Y %s %b\\n"}, options)
            .output);
    char type = 0;
    char target = 0;
    uint64_t size = 0;
    uint64_t blocks = 0;
    while (found >> type >> target >> size >> blocks) {
        ++(type == 'd' ? sums.containedFolderCount : sums.containedFileCount);
        if (type == 'd' || (type == 'l' && (target == 'N' || target == 'L' || target == '?')))
            continue; // a link that leads nowhere adds nothing
        sums.dataForkSize += size;
        sums.physicalDataForkSize += type == 'l' ? 0 : blocks * 512;
    }
    return withTotals(sums);
}

MXFSOSizeRecord sumsOf(const std::string &folder) {
    const auto item = MXFileSystemObject::newFSOForLocalPath(text(folder), false);
    return item->sizeObject()->record();
}

/// For a process of its own: 0 where both are the same.
int compare(const MXFSOSizeRecord &one, const MXFSOSizeRecord &other) {
    if (one == other)
        return 0;
    for (const MXFSOSizeRecord *const record : {&one, &other}) {
        PrintTo(*record, &std::cerr);
        std::cerr << '\n';
    }
    return 1;
}

void setFlags(const std::string &path, uint16_t flags) {
    FinderInfo info;
    info.flags = flags;
    ASSERT_EQ(writeFinderInfo(QByteArray::fromStdString(path), info), noErr);
}

/// Makes a file of one byte.
void makeFile(int folder, const std::string &name) {
    const Descriptor file(openat(folder, name.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0644));
    ASSERT_EQ(write(file.number(), "x", 1), 1);
}

/// Makes @p count files whose names take 224 bytes of a block.
void fill(int folder, int count) {
    for (int file = 0; file < count; ++file)
        makeFile(folder, std::string(195, 'x') + std::to_string(file));
}

/// @p count folders in one another below the folder @p place, each with two files and other
/// folders, at first many; in the last there is more than a block.
void makeDeep(const std::string &place, int count) {
    int folder = open(place.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (int level = 0; level < count; ++level) {
        for (int other = 0; other < (level < 40 ? 8 : 1); ++other) // more than threads take
            ASSERT_EQ(mkdirat(folder, std::to_string(level + other).c_str(), 0755), 0);
        ASSERT_EQ(mkdirat(folder, "deeper", 0755), 0);
        makeFile(folder, "file");
        makeFile(folder, "._file"); // which is looked into, but no sidecar
        const int next = openat(folder, "deeper", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        close(std::exchange(folder, next));
    }
    fill(folder, 400);
    close(folder);
}

/// A folder with enough in it for several threads: 4,030 files, 30 folders.
void makeWide(const TemporaryFolder &place) {
    place.folder("flat");
    for (int file = 0; file < 3000; ++file)
        place.file("flat/a file with a name that fills the block " + std::to_string(file), 1);
    for (int folder = 0; folder < 29; ++folder) {
        const std::string name = "flat/folder " + std::to_string(folder);
        place.folder(name);
        for (int file = 0; file < 35; ++file)
            place.file(name + "/" + std::to_string(file), 10);
    }
    for (int file = 0; file < 15; ++file)
        place.file(std::to_string(file), 100);
}

TEST(Size, AsAShortText) {
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
        EXPECT_EQ(taken(format_size(row.size)), row.text) << row.size;
}

TEST(Size, TextsOfAPanel) {
    auto record = std::make_unique<MXFSOSizeRecord>();
    record->dataForkSize = 1'234'567;
    record->physicalDataForkSize = 1'572'864;
    record->resourceForkSize = 999;
    record->physicalResourceForkSize = 4096;
    record->totalSize = uint64_t(3) << 40;
    record->volumeFreeBytes = uint64_t(1) << 40;
    record->physicalTotalSize = 2047;
    record->containedItemCount = 1'001'002;
    record->containedFileCount = 1'000'000;
    record->containedFolderCount = 1002;
    record->hiddenItemCount = 7;
    const auto size = MXFileSystemObjectSize::initWithLocalFileSize(std::move(record));
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
    EXPECT_EQ(MXFileSystemObjectSize::initWithLocalFileSize(nullptr)->containsGetInfo(),
              "No items");
}

TEST(Size, IsWhatOneObjectAnEntryAddsUp) {
    const SpecialItems items;
    const TemporaryFolder folder;
    // What SpecialItems leave out: hidden items and forks of every sort, and damage.
    for (const char *const name : {"hidden", "hidden in a sidecar", "plain"})
        folder.folder(name);
    for (const char *const name :
         {"hidden file", "forked", "forked in a sidecar", "damaged", "in a hidden folder"})
        folder.file(name, 5000);
    setFlags(folder.at("hidden"), kIsInvisible);
    setFlags(folder.at("hidden file"), kIsInvisible | kHasCustomIcon);
    setFlags(folder.at("plain"), kHasCustomIcon);
    const QByteArray fork(3000, 'r');
    ASSERT_EQ(writeResourceFork(QByteArray::fromStdString(folder.at("forked in a sidecar")), fork),
              noErr);
    // In a folder without sidecars.
    folder.folder("plain/hidden");
    folder.file("plain/hidden file");
    setFlags(folder.at("plain/hidden"), kIsInvisible);
    setFlags(folder.at("plain/hidden file"), kIsInvisible);
    ASSERT_EQ(setxattr(folder.file("plain/forked").c_str(), "user.com.apple.ResourceFork",
                       fork.constData(), 3000, 0),
              0);
    const std::string sidecar = folder.at("._forked in a sidecar");
    constexpr int kFlagsInSidecar = 50 + 8; // behind type and creator
    std::fstream(sidecar, std::ios::in | std::ios::out).seekp(kFlagsInSidecar) << "\x40";
    for (const char *const name : {"._hidden in a sidecar", "._fifo", "._link", "._dead link"})
        fs::copy_file(sidecar, folder.at(name));
    const std::string large = folder.folder("large");
    fill(Descriptor(open(large.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)).number(), 1500);
    folder.file("large/forked");
    fs::copy_file(sidecar, large + "/._forked"); // hardly in the first block
    folder.fifo("fifo");
    folder.link("link", "forked");
    folder.link("dead link", "nowhere");
    std::ofstream(folder.at("._damaged")) << std::string("\0\5\x16\7\0\2\0\0", 8);
    // Readable, but nobody can look at what is in it: an object of a link to it cannot be made.
    folder.folder("closed");
    folder.file("closed/a file", 10);
    folder.folder("closed/a folder");
    folder.link("link to closed", "closed");
    folder.folder("shut"); // for which no look is needed
    folder.link("link to shut", "shut");
    ASSERT_EQ(chmod(folder.at("shut").c_str(), 0), 0);
    setFlags(folder.at("closed"), kIsInvisible); // nor one of it
    ASSERT_EQ(chmod(folder.at("closed").c_str(), 0744), 0);
    ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);

    for (const std::string &path : {items.path(), folder.path()}) {
        EXPECT_EQ(sumsOf(path), sumsOfObjects(path)) << path;
        EXPECT_EQ(runAsNobody([&path] { return compare(sumsOf(path), sumsOfObjects(path)); }), 0);
    }
    const MXFSOSizeRecord sums = sumsOf(folder.path());
    EXPECT_EQ(itemAt(folder.path())->measureSize()->unreadableCount, 1U) << "the damaged one";
    EXPECT_EQ(sums.resourceForkSize, 4 * 3000U)
        << "of three files and, by its sidecar, of the fifo";
    EXPECT_EQ(sums.hiddenItemCount, 10U);
}

TEST(Size, IsThatOfFind) {
    const TemporaryFolder folder;
    makeWide(folder);
    makeDeep(folder.folder("deep"), 3000);
    std::ofstream sparse(folder.at("sparse"));
    sparse.seekp(int64_t(5) << 30) << "end";
    sparse.close();
    fs::create_hard_link(folder.at("0"), folder.at("another name"));
    folder.fifo("fifo");
    (void)mknod(folder.at("device").c_str(), S_IFCHR | 0600, makedev(1, 3)); // where permitted
    folder.link("dead", "nowhere");
    folder.link("circle", "circle");
    folder.link("link to folder", "flat");
    folder.link("link to file", "flat/../0");
    folder.file("name \xFF\xFE", 3);
    folder.folder("folder \xC3\x28");
    folder.file("folder \xC3\x28/\x80", 3);
    for (const char *const name : {"unreadable", "without names"}) {
        folder.folder(name);
        folder.file(std::string(name) + "/file", 1000);
    }
    ASSERT_EQ(chmod(folder.at("unreadable").c_str(), 0000), 0);
    ASSERT_EQ(chmod(folder.at("without names").c_str(), 0711), 0);
    ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
    const MXFSOSizeRecord all = sumsOfFind(folder.path());
    EXPECT_EQ(sumsOf(folder.path()), all);
    EXPECT_GT(all.containedFolderCount, 6030U);
    EXPECT_EQ(sumsOf(folder.path() + "/"), all);

    ProcessOptions asNobody;
    asNobody.asNobody = true;
    const MXFSOSizeRecord some = sumsOfFind(folder.path(), asNobody);
    EXPECT_EQ(runAsNobody([&] { return compare(sumsOf(folder.path()), some); }), 0);

    constexpr rlim_t kHardlyAny = 16;
    EXPECT_EQ(runForked([&] {
                  const rlimit limit = {kHardlyAny, kHardlyAny};
                  return setrlimit(RLIMIT_NOFILE, &limit) == 0 ? compare(sumsOf(folder.path()), all)
                                                               : 2;
              }),
              0)
        << "with few descriptors";
    const std::string deep = folder.at("deep/" + std::string("deeper/", 7));
    std::string veryDeep = deep;
    for (int level = 1; level < 1000; ++level)
        veryDeep += "deeper/";
    EXPECT_EQ(sumsOf(veryDeep).containedFolderCount, 4000U) << "a path of 7,000 bytes";
    fs::remove_all(folder.at("unreadable"));
}

TEST(Size, OfWhatIsNoFolder) {
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

TEST(Size, IsMeasuredOnce) {
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

TEST(Size, ThatFailsIsTriedAgain) {
    const TemporaryFolder folder;
    const std::string file = folder.file("file", 7);
    const std::string gone = folder.file("gone");
    const auto item = itemAt(file);
    const auto goneItem = itemAt(gone);
    fs::remove(gone);
    std::ofstream(folder.at("._file")) << std::string("\0\5\x16\7\0\2\0\0", 8);
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

TEST(Size, OfAVolumeIsAskedForEachTime) {
    const MountedFolder volume("tmpfs", "size=1m");
    if (!volume.obstacle().empty())
        GTEST_SKIP() << volume.obstacle();
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

    // From outside it is a folder on which something is mounted.
    const std::string outside = fs::path(volume.path()).parent_path();
    EXPECT_EQ(sumsOf(outside).totalSize, 300'000U);
    MXSizeOptions stay;
    stay.staysOnVolume = true;
    const auto measured =
        MXFileSystemObject::newFSOForLocalPath(text(outside), false)->measureSize(stay);
    EXPECT_EQ(measured->record.totalSize, 0U);
    EXPECT_EQ(measured->record.containedFolderCount, sumsOf(outside).containedFolderCount);
}

TEST(Size, BeyondTheSums) {
    const TemporaryFolder folder;
    folder.file("one", 1000);
    folder.folder("sub");
    for (const char *const name : {"two", "sub/three"})
        fs::create_hard_link(folder.at("one"), folder.at(name));
    const TemporaryFolder elsewhere;
    const std::string other = elsewhere.file("file", 1);
    fs::create_hard_link(other, folder.at("four")); // its other name is not met
    folder.link("link", "one");
    fs::create_hard_link(folder.at("link"), folder.at("same link"));
    folder.folder("sub/closed");
    ASSERT_EQ(chmod(folder.at("sub/closed").c_str(), 0), 0);
    folder.folder("names alone");
    folder.file("names alone/file");
    ASSERT_EQ(chmod(folder.at("names alone").c_str(), 0744), 0);
    ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
    MXSizeOptions options;
    options.countsHardLinksOnce = true;
    options.listsUnreadable = true;
    const auto item = MXFileSystemObject::newFSOForLocalPath(text(folder.path() + "/"), false);
    EXPECT_EQ(item->measureSize()->record.totalSize, 3001U + 2 * 3);
    const auto once = item->measureSize(options);
    EXPECT_EQ(once->record.totalSize, 1001U + 3);
    EXPECT_EQ(once->record.containedFileCount, 7U) << "every name counts";
    EXPECT_EQ(once->unreadableCount, 0U);
    EXPECT_EQ(runAsNobody([&] {
                  const auto measured = item->measureSize(options);
                  const QList<MXUnreadableItem> &list = measured->unreadable;
                  const bool isRight =
                      list.size() == 2 && item->measureSize()->unreadable.empty() &&
                      measured->unreadableCount == 2 &&
                      list[0].path == text(folder.at("names alone/file")) &&
                      list[1].path == text(folder.at("sub/closed")) && list[1].status == permErr;
                  return isRight && measured->record.containedFileCount == 7 ? 0 : 1;
              }),
              0);
}

TEST(Size, OfACancelledItemIsThatOfOneEntry) {
    const TemporaryFolder folder;
    makeWide(folder);
    for (const std::string &path : {folder.path(), folder.at("flat")}) {
        const auto item = MXFileSystemObject::newFSOForLocalPath(text(path), false);
        EXPECT_FALSE(item->folderSizeCalulationCancelled());
        item->cancelFolderSizeCalulation();
        EXPECT_TRUE(item->folderSizeCalulationCancelled());
        const auto partial = item->sizeObject();
        EXPECT_EQ(partial->containedItemCount(), 1U);
        EXPECT_EQ(item->sizeObject(), partial) << "kept";
        item->invalidateCachedSize();
        EXPECT_EQ(item->sizeObject()->containedItemCount(), 1U) << "for good";
        EXPECT_TRUE(item->measureSize()->isPartial);
    }
}

TEST(Size, EndsWithWhatItsListenerThrows) {
    const auto item = MXFileSystemObject::newFSOForLocalPath("/usr", false);
    int calls = 0;
    try {
        (void)item->sizeObject([&calls](const MXSizeProgress &) {
            ++calls;
            throw std::runtime_error("enough");
        });
        EXPECT_EQ(calls, 0);
    } catch (const std::runtime_error &) {
        EXPECT_EQ(calls, 1);
    }
}

TEST(Size, MayBeCancelledAtAnyMoment) {
    const TemporaryFolder folder;
    makeWide(folder);
    const MXFSOSizeRecord all = sumsOf(folder.path());
    std::mt19937 random(1); // NOLINT(cert-msc51-cpp): the same moments each time
    std::uniform_int_distribution<int> microseconds(0, 20'000);
    int partial = 0;
    for (int attempt = 0; attempt < 60; ++attempt) {
        const auto item = MXFileSystemObject::newFSOForLocalPath(text(folder.path()), false);
        const std::chrono::microseconds delay(microseconds(random));
        std::thread canceller([&item, delay] {
            std::this_thread::sleep_for(delay);
            item->cancelFolderSizeCalulation();
        });
        const auto measured = item->measureSize();
        canceller.join();
        const MXFSOSizeRecord &record = measured->record;
        EXPECT_GE(record.containedItemCount, 1U);
        EXPECT_LE(record.containedItemCount, all.containedItemCount);
        EXPECT_LE(record.dataForkSize, all.dataForkSize);
        if (!measured->isPartial) {
            EXPECT_EQ(record, all);
        }
        partial += measured->isPartial;
    }
    EXPECT_GT(partial, 0);
}

TEST(Size, IsToldWhileItIsMeasured) {
    using Clock = std::chrono::steady_clock;
    const auto item = MXFileSystemObject::newFSOForLocalPath("/usr", false);
    std::vector<MXSizeProgress> told;
    const auto start = Clock::now();
    const auto size = item->sizeObject([&told, here = std::this_thread::get_id()](auto progress) {
        EXPECT_EQ(std::this_thread::get_id(), here);
        told.push_back(progress);
    });
    const double seconds = std::chrono::duration<double>(Clock::now() - start).count();
    EXPECT_LE(double(told.size()), seconds * 20 + 1);
    if (seconds > 0.5) {
        EXPECT_FALSE(told.empty());
    }
    told.push_back({size->containedItemCount(), size->totalSize()});
    for (std::size_t index = 1; index < told.size(); ++index) {
        EXPECT_GE(told[index].entries, told[index - 1].entries);
        EXPECT_GE(told[index].bytes, told[index - 1].bytes);
    }
}

} // namespace
