// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/catalogue/FileCatalogue.h"
#include "platform/files/MountTable.h"
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

FSCatalogInfo catalogued(const std::string &path, FSCatalogInfoBitmap whichInfo) {
    FSCatalogInfo info;
    EXPECT_EQ(FSGetCatalogInfo(refTo(path), whichInfo, &info), noErr) << path;
    return info;
}

/// The output of a command, without the line end.
std::string printed(const std::vector<std::string> &command) {
    std::string output = runProcess(command).output;
    return output.substr(0, output.find('\n'));
}

TEST(Catalogue, AgreesWithTheSystem) {
    const TemporaryFolder folder;
    (void)folder.file("file", 5000);
    (void)folder.link("link", "file");
    (void)folder.link("dangling", "nowhere");
    (void)folder.fifo("fifo");
    for (const std::string &path : {folder.at("file"), folder.path(), folder.at("link"),
                                    folder.at("dangling"), folder.at("fifo")}) {
        constexpr FSCatalogInfoBitmap kAll =
            kFSCatInfoNodeFlags | kFSCatInfoVolume | kFSCatInfoCreateDate | kFSCatInfoContentMod |
            kFSCatInfoFinderInfo | kFSCatInfoDataSizes | kFSCatInfoRsrcSizes;
        const FSCatalogInfo info = catalogued(path, kAll);
        struct stat item = {};
        ASSERT_EQ(lstat(path.c_str(), &item), 0);
        EXPECT_EQ(info.nodeFlags.toInt(), S_ISDIR(item.st_mode) ? 0x10U : 0U) << path;
        EXPECT_EQ(timeFrom(info.contentModDate).tv_sec, item.st_mtim.tv_sec) << path;
        EXPECT_EQ(std::to_string(timeFrom(info.createDate).tv_sec),
                  printed({"stat", "-c", "%W", path}));
        EXPECT_EQ(info.dataLogicalSize, static_cast<uint64_t>(item.st_size)) << path;
        EXPECT_EQ(info.dataPhysicalSize, static_cast<uint64_t>(item.st_blocks) * 512) << path;
        EXPECT_EQ(info.rsrcLogicalSize, 0U) << path;
        EXPECT_EQ(std::to_string(info.volume),
                  printed({"findmnt", "-no", "ID", "-T", folder.path()}));
    }
    fs::remove(folder.at("file"));
    FSCatalogInfo info;
    const FSRef gone = refTo(folder.at("fifo"));
    fs::remove(folder.at("fifo"));
    setenv("HOME", folder.path().c_str(), 1);
    EXPECT_EQ(FSGetCatalogInfo(gone, kFSCatInfoNodeFlags, &info), fnfErr);
}

TEST(Catalogue, DatesAreCountedFrom1904) {
    const struct {
        timespec time;
        UTCDateTime date;
    } rows[] = {
        {{-2'082'844'800, 0}, 0},
        {{-2'082'844'799, 0}, 65536},
        {{-2'082'844'801, 0}, 0},
        {{0, 500'000'000}, 2'082'844'800ULL * 65536 + 32768},
    };
    for (const auto &row : rows)
        EXPECT_EQ(utcDateTimeFrom(row.time), row.date);
    EXPECT_EQ(utcDateTimeFrom({INT64_MAX, 0}), UINT64_MAX) << "tmpfs stores such times";
    EXPECT_EQ(utcDateTimeFrom({INT64_MIN, 0}), 0U);
    for (const UTCDateTime date : {0ULL, 1ULL, 65535ULL, 136'500'000'000'001ULL})
        EXPECT_EQ(utcDateTimeFrom(timeFrom(date)), date);
}

TEST(Catalogue, ChangesOnlyWhatIsRequested) {
    const TemporaryFolder folder;
    const std::string item = folder.file("item", 10);
    FSCatalogInfo info = catalogued(item, kFSCatInfoContentMod | kFSCatInfoFinderInfo);
    info.contentModDate -= 65536ULL * 86400;
    info.finderInfo.flags.setFlag(kIsInvisible, true);
    EXPECT_EQ(FSSetCatalogInfo(refTo(item), kFSCatInfoContentMod | kFSCatInfoFinderInfo, info),
              noErr);
    const FSCatalogInfo now = catalogued(item, kFSCatInfoContentMod | kFSCatInfoFinderInfo);
    EXPECT_EQ(now.contentModDate, info.contentModDate);
    EXPECT_EQ(now.finderInfo, info.finderInfo);
    EXPECT_EQ(FSSetCatalogInfo(refTo(item), kFSCatInfoCreateDate, info),
              errFSOperationNotSupported);
    EXPECT_EQ(FSSetCatalogInfo(refTo(item), kFSCatInfoDataSizes, info), errFSOperationNotSupported);
}

TEST(Catalogue, ALockedItemIsImmutable) {
    const MountedFolder mounted("ext4");
    if (!mounted.failureReason().empty())
        GTEST_SKIP() << mounted.failureReason();
    const std::string item = mounted.at("item");
    raw::write(item, "content");
    FSCatalogInfo info;
    info.nodeFlags = kFSNodeLockedMask;
    info.finderInfo.setLabelNumber(6);
    EXPECT_EQ(runAsNobody([&] {
                  return FSSetCatalogInfo(refTo(item), kFSCatInfoNodeFlags, info) == permErr ? 0
                                                                                             : 1;
              }),
              0);
    EXPECT_EQ(FSSetCatalogInfo(refTo(item), kFSCatInfoNodeFlags | kFSCatInfoFinderInfo, info),
              noErr);
    EXPECT_EQ(catalogued(item, kFSCatInfoNodeFlags).nodeFlags, kFSNodeLockedMask);
    EXPECT_EQ(catalogued(item, kFSCatInfoFinderInfo).finderInfo.labelNumber(), 6);
    EXPECT_EQ(printed({"lsattr", item}).substr(0, 5), "----i");
    EXPECT_EQ(FSSetCatalogInfo(refTo(item), kFSCatInfoFinderInfo, FSCatalogInfo()), permErr);
    EXPECT_EQ(catalogued(item, kFSCatInfoFinderInfo).finderInfo.labelNumber(), 6);
    info = {};
    EXPECT_EQ(FSSetCatalogInfo(refTo(item), kFSCatInfoNodeFlags | kFSCatInfoFinderInfo, info),
              noErr);
    EXPECT_EQ(catalogued(item, kFSCatInfoNodeFlags).nodeFlags, FSNodeFlags());
    EXPECT_EQ(raw::attribute(item, "user.com.apple.FinderInfo"), std::nullopt);
    (void)runProcess({"mkfifo", mounted.at("fifo")});
    info.nodeFlags = kFSNodeLockedMask;
    EXPECT_EQ(FSSetCatalogInfo(refTo(mounted.at("fifo")), kFSCatInfoNodeFlags, info),
              errFSOperationNotSupported);
}

TEST(Catalogue, UnsupportedFieldsAreReported) {
    const MountedFolder mounted("ramfs");
    if (!mounted.failureReason().empty())
        GTEST_SKIP() << mounted.failureReason();
    raw::write(mounted.at("item"), "content");
    FSCatalogInfo info;
    EXPECT_EQ(FSGetCatalogInfo(refTo(mounted.at("item")),
                               kFSCatInfoCreateDate | kFSCatInfoDataSizes, &info),
              errFSOperationNotSupported);
    EXPECT_EQ(info.dataLogicalSize, 7U);
    info.nodeFlags = kFSNodeLockedMask;
    EXPECT_EQ(FSSetCatalogInfo(refTo(mounted.at("item")), kFSCatInfoNodeFlags, info),
              errFSOperationNotSupported);
}

TEST(Volumes, HaveTheSystemsFigures) {
    const FSVolumeRefNum volume = catalogued("/", kFSCatInfoVolume).volume;
    FSVolumeInfo info;
    constexpr FSVolumeInfoBitmap kAll = kFSVolInfoFileCount | kFSVolInfoDirCount | kFSVolInfoSizes;
    EXPECT_EQ(FSGetVolumeInfo(volume, kAll, &info, nullptr), noErr);
    EXPECT_EQ(std::to_string(info.totalBytes / 1024),
              printed({"sh", "-c", "df --output=size / | tail -1 | tr -d ' '"}));
    EXPECT_EQ(info.folderCount, 0U);
    EXPECT_GT(info.fileCount, 0U);
    EXPECT_EQ(FSGetVolumeInfo(-7, kAll, &info, nullptr), nsvErr);
}

TEST(Volumes, AreNamedByLabelMountPointOrHost) {
    const auto nameOf = [](const std::string &path) {
        QString name;
        EXPECT_EQ(FSGetVolumeInfo(catalogued(path, kFSCatInfoVolume).volume, kFSVolInfoNone,
                                  nullptr, &name),
                  noErr);
        return name.toStdString();
    };
    const MountedFolder memory("tmpfs");
    if (!memory.failureReason().empty())
        GTEST_SKIP() << memory.failureReason();
    EXPECT_EQ(nameOf(memory.path()), "mounted");
    const MountedFolder disk("ext4");
    if (!disk.failureReason().empty())
        GTEST_SKIP() << disk.failureReason();
    const std::string device = printed({"findmnt", "-no", "SOURCE", disk.path()});
    ASSERT_EQ(runProcess({"e2label", device, "My Disk"}).status, 0);
    fs::create_directory(disk.at("folder"));
    EXPECT_EQ(nameOf(disk.at("folder")), "My Disk");
    const std::string ofRoot = // from the device if there is no table of labels
        printed({"sh", "-c",
                 "findmnt -no LABEL / | grep . || blkid -o value -s LABEL "
                 "$(findmnt -no SOURCE /)"});
    EXPECT_EQ(nameOf("/"), ofRoot.empty() ? printed({"uname", "-n"}) : ofRoot);
}

TEST(MountTable, ReadsWhatTheKernelWrites) {
    const std::vector<Mount> mounts = parseMountTable(
        "22 27 0:21 / /proc rw,relatime - proc proc rw\n"
        "36 35 98:3 /sub /mnt/a\\040b\\134 rw shared:1 master:2 - ext3 /dev/ro\\011ot rw\n"
        "cut short 98:3\n\n"
        "37 35 98:3 / /mnt rw - ext3\n");
    ASSERT_EQ(mounts.size(), 2U);
    EXPECT_EQ(mounts[1].id, 36);
    EXPECT_EQ(mounts[1].mountPoint, "/mnt/a b\\");
    EXPECT_EQ(mounts[1].root, "/sub");
    EXPECT_EQ(mounts[1].source, "/dev/ro\tot");
    EXPECT_EQ(mountOf("/proc/self", mounts), &mounts[0]);
    EXPECT_EQ(mountOf("/process", mounts), nullptr);
    const std::vector<Mount> real = mountTable();
    for (const char *const path : {"/", "/proc/self", "/dev/null"})
        EXPECT_EQ(mountOf(path, real)->mountPoint.toStdString(),
                  printed({"findmnt", "-no", "TARGET", "-T", path}));
}

} // namespace
