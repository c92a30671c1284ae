// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/posix/Descriptor.h"
#include "platform/metadata/MetadataStore.h"
#include "tests/model/sizes.h"
#include "tests/model/SpecialItems.h"
#include "tests/support/Process.h"

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
#include <sys/sysmacros.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using namespace MWCore;

MXFSOSizeRecord withTotals(MXFSOSizeRecord record) {
    record.totalSize = record.dataForkSize + record.resourceForkSize;
    record.physicalTotalSize = record.physicalDataForkSize + record.physicalResourceForkSize;
    record.containedItemCount = record.containedFileCount + record.containedFolderCount;
    return record;
}

/// The same sums from one object per entry.
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
            if (const auto own = item ? item->getLocalFileSize() : std::nullopt) {
                sums.dataForkSize += own->dataForkSize;
                sums.physicalDataForkSize += own->physicalDataForkSize;
                sums.resourceForkSize += own->resourceForkSize;
                sums.physicalResourceForkSize += own->physicalResourceForkSize;
            }
            sums.hiddenItemCount += item && item->isInvisible();
            ++sums.containedFileCount;
        }
        std::error_code ignored; // the folder's entries cannot be examined
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
            continue; // a broken link adds nothing
        sums.dataForkSize += size;
        sums.physicalDataForkSize += type == 'l' ? 0 : blocks * 512;
    }
    return withTotals(sums);
}

/// Runs in a separate process; returns 0 if both are equal.
int compare(const MXFSOSizeRecord &one, const MXFSOSizeRecord &other) {
    if (one == other)
        return 0;
    for (const MXFSOSizeRecord *const record : {&one, &other}) {
        PrintTo(*record, &std::cerr);
        std::cerr << '\n';
    }
    return 1;
}

void setFlags(const std::string &path, FinderFlags flags) {
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

/// Makes @p count nested folders below the folder @p place. Each has two files and other folders,
/// the upper ones many; the last one has more than a block of names.
void makeDeep(const std::string &place, int count) {
    int folder = open(place.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    for (int level = 0; level < count; ++level) {
        for (int other = 0; other < (level < 40 ? 8 : 1); ++other) // more than there are threads
            ASSERT_EQ(mkdirat(folder, std::to_string(level + other).c_str(), 0755), 0);
        ASSERT_EQ(mkdirat(folder, "deeper", 0755), 0);
        makeFile(folder, "file");
        makeFile(folder, "._file"); // is opened, but is not a sidecar
        const int next = openat(folder, "deeper", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
        close(std::exchange(folder, next));
    }
    fill(folder, 400);
    close(folder);
}

/// A folder with enough items for several threads: 4,030 files, 30 folders.
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

TEST(SizeWalk, AgreesWithOneObjectPerEntry) {
    const SpecialItems items;
    const TemporaryFolder folder;
    // Not in SpecialItems: hidden items, forks in every place, and damage.
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
    fs::copy_file(sidecar, large + "/._forked"); // probably not in the first block
    folder.fifo("fifo");
    folder.link("link", "forked");
    folder.link("dead link", "nowhere");
    folder.damagedSidecar("damaged");
    // Readable but not searchable: an object of a link to it cannot be made.
    folder.folder("closed");
    folder.file("closed/a file", 10);
    folder.folder("closed/a folder");
    folder.link("link to closed", "closed");
    folder.folder("shut"); // needs no inspection
    folder.link("link to shut", "shut");
    ASSERT_EQ(chmod(folder.at("shut").c_str(), 0), 0);
    setFlags(folder.at("closed"), kIsInvisible); // nor can one of the folder
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

TEST(SizeWalk, AgreesWithFind) {
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

TEST(SizeWalk, Options) {
    const TemporaryFolder folder;
    folder.file("one", 1000);
    folder.folder("sub");
    for (const char *const name : {"two", "sub/three"})
        fs::create_hard_link(folder.at("one"), folder.at(name));
    const TemporaryFolder elsewhere;
    const std::string other = elsewhere.file("file", 1);
    fs::create_hard_link(other, folder.at("four")); // its other name is not visited
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

TEST(SizeWalk, CountsAForkInASidecarOnceOnRequest) {
    const TemporaryFolder folder;
    const QByteArray fork(3000, 'r');
    const auto giveFork = [&fork](const std::string &path) {
        ASSERT_EQ(writeResourceFork(QByteArray::fromStdString(path), fork), noErr);
    };
    for (const char *const name : {"forked", "gone", "damaged", "with both"})
        giveFork(folder.file(name, 5000));
    giveFork(folder.folder("folder"));
    fs::copy_file(folder.at("._forked"), folder.at("._fifo"));
    fs::copy_file(folder.at("._forked"), folder.at("._link"));
    fs::copy_file(folder.at("._forked"), folder.at("._._forked"));
    folder.fifo("fifo");
    folder.link("link", "forked");
    fs::remove(folder.at("gone"));
    fs::resize_file(folder.at("._damaged"), 60);
    folder.file("plain", 10);
    folder.file("._plain", 3000); // not a sidecar
    folder.file("._", 10);
    ASSERT_EQ(setxattr(folder.at("with both").c_str(), "user.com.apple.ResourceFork", "fork", 4, 0),
              0);
    fs::create_hard_link(folder.at("forked"),
                         folder.at("A")); // has a fork under only one of its names

    MXSizeOptions options;
    const auto item = MXFileSystemObject::newFSOForLocalPath(text(folder.path()), false);
    const auto sums = [&] { return item->measureSize(options)->record; };
    const MXFSOSizeRecord twice = sums();
    EXPECT_EQ(twice.resourceForkSize, 2 * 3000U + 4) << "of a file, a fifo and an attribute";
    options.countsSidecarForksOnce = true;
    const MXFSOSizeRecord once = sums();
    EXPECT_EQ(once.resourceForkSize, twice.resourceForkSize);
    EXPECT_EQ(once.physicalResourceForkSize, twice.physicalResourceForkSize);
    EXPECT_EQ(once.containedFileCount, twice.containedFileCount);
    // As find counts, except for the attribute and the item with a damaged fork.
    const MXFSOSizeRecord found = sumsOfFind(folder.path());
    EXPECT_EQ(once.totalSize, found.totalSize - 5000 + 4);
    EXPECT_EQ(twice.totalSize - once.totalSize, 2 * 3000U);
    EXPECT_EQ(twice.physicalTotalSize - once.physicalTotalSize, once.physicalResourceForkSize - 4);

    options.countsHardLinksOnce = true;
    EXPECT_EQ(sums().totalSize, once.totalSize - 5000) << "whichever name is met first";
    fs::create_hard_link(folder.at("._forked"), folder.at("._A"));
    EXPECT_EQ(sums().totalSize, once.totalSize - 5000) << "one sidecar for both";
}

TEST(SizeWalk, MeasuresOneEntryOfACancelledItem) {
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

TEST(SizeWalk, StopsIfTheProgressCallbackThrows) {
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

TEST(SizeWalk, CanBeCancelledAtAnyTime) {
    const TemporaryFolder folder;
    makeWide(folder);
    const MXFSOSizeRecord all = sumsOf(folder.path());
    std::mt19937 random(1); // NOLINT(cert-msc51-cpp): the same times in every run
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

TEST(SizeWalk, ReportsProgress) {
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
