// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/aliases/Aliases.h"
#include "platform/aliases/FileUrl.h"
#include "platform/formats/AppleDouble.h"
#include "platform/formats/BigEndian.h"
#include "platform/formats/ResourceMap.h"
#include "platform/metadata/MetadataStore.h"
#include "platform/references/FSSpec.h"
#include "tests/platform/metadata/attributes.h"
#include "tests/platform/references.h"
#include "tests/platform/samples.h"
#include "tests/support/MountedFolder.h"
#include "tests/support/Process.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using namespace MWCore;

/// Where an alias file leads: a path, "no alias", or the text of the status.
std::string leadOf(const std::string &path, AliasSteps steps = AliasSteps::All) {
    FSRef ref = refTo(path);
    bool isFolder = false;
    bool wasAliased = false;
    const OSStatus status = FSResolveAliasFile(&ref, steps, &isFolder, &wasAliased);
    if (status != noErr)
        return statusText(status);
    EXPECT_EQ(isFolder, fs::is_directory(ref.path.toStdString()));
    return wasAliased ? ref.path.toStdString() : "no alias";
}

void makeAlias(const std::string &target, const std::string &file, AliasFileForm form) {
    EXPECT_EQ(FSCreateAliasFile(refTo(target), file.c_str(), form), noErr) << file;
}

TEST(AliasFiles, BothFormsLeadToTheMovedItem) {
    const struct {
        AliasFileForm form;
        const char *name;
    } rows[] = {{AliasFileForm::DesktopEntry, "alias.desktop"},
                {AliasFileForm::Finder, "alias"},
                {AliasFileForm::Finder, "finder.desktop"}};
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        const TemporaryFolder folder;
        const std::string alias = folder.at(row.name);
        makeAlias(folder.folder("caf\u00e9 100%"), alias, row.form);
        EXPECT_EQ(leadOf(alias), folder.at("caf\u00e9 100%"));
        fs::rename(folder.at("caf\u00e9 100%"), folder.at("renamed"));
        EXPECT_EQ(leadOf(alias), folder.at("renamed"));
        fs::remove(folder.at("renamed"));
        EXPECT_EQ(leadOf(alias), statusText(fnfErr));
        const FSRef ref = refTo(folder.path());
        EXPECT_EQ(FSCreateAliasFile(ref, alias.c_str(), row.form), dupFNErr);
        EXPECT_EQ(FSCreateAliasFile(ref, folder.at("x.txt").c_str(), AliasFileForm::DesktopEntry),
                  bdNamErr);
    }
}

TEST(AliasFiles, DesktopEntriesAreReadableByOtherPrograms) {
    const TemporaryFolder folder;
    makeAlias(folder.file("a; b\\c \xFF.txt"), folder.at("alias.desktop"),
              AliasFileForm::DesktopEntry);
    const ProcessResult validated =
        runProcess({"desktop-file-validate", folder.at("alias.desktop")});
    EXPECT_EQ(validated.output.find("error"), std::string::npos) << validated.output;
    const auto entry = raw::content(folder.at("alias.desktop"));
    EXPECT_TRUE(entry->contains("\nURL=file://")) << entry->toStdString();
    EXPECT_TRUE(entry->contains("/a%3B%20b%5Cc%20%FF.txt\n")) << entry->toStdString();
}

TEST(AliasFiles, ForeignDesktopEntriesAreFollowedByTheirURL) {
    const TemporaryFolder folder;
    const std::string target = folder.file("the target");
    const std::string place = folder.path();
    const struct {
        const char *what;
        std::string entry;
        std::string leads;
    } rows[] = {
        {"a URL", "Type=Link\nURL=file://" + place + "/the%20target\n", target},
        {"of this host", "Type=Link\nURL=file://localhost" + place + "/the%20target\n", target},
        {"without a host", "Type=Link\nURL=file:" + place + "/the%20target\n", target},
        {"of another host", "Type=Link\nURL=file://elsewhere.example/x\n",
         statusText(errFSOperationNotSupported)},
        {"not local", "Type=Link\nURL=https://example.org/\n",
         statusText(errFSOperationNotSupported)},
        {"nothing there", "Type=Link\nURL=file:///nowhere\n", statusText(fnfErr)},
        {"a NUL in the path", "Type=Link\nURL=file:///tmp%00\n",
         statusText(errFSOperationNotSupported)},
        {"no URL", "Type=Link\n", "no alias"},
        {"a program", "Type=Application\nURL=file:///tmp\n", "no alias"},
        {"an invalid record",
         "Type=Link\nX-MWCore-Alias=AAAA\nURL=file://" + place + "/the%20target\n", target},
    };
    for (const auto &row : rows) {
        raw::write(folder.at("x.desktop"), ("[Desktop Entry]\n" + row.entry).c_str());
        EXPECT_EQ(leadOf(folder.at("x.desktop")), row.leads) << row.what;
    }
    raw::write(folder.at("plain.txt"), "[Desktop Entry]\nType=Link\nURL=file:///tmp\n");
    EXPECT_EQ(leadOf(folder.at("plain.txt")), "no alias") << "its name does not end in .desktop";
}

TEST(AliasFiles, ChainsAreFollowedAndLoopsFail) {
    const TemporaryFolder folder;
    const std::string end = folder.folder("end");
    makeAlias(end, folder.at("one"), AliasFileForm::Finder);
    makeAlias(folder.at("one"), folder.at("two.desktop"), AliasFileForm::DesktopEntry);
    makeAlias(folder.link("link", "two.desktop"), folder.at("three"), AliasFileForm::Finder);
    EXPECT_EQ(leadOf(folder.at("three")), end);
    EXPECT_EQ(leadOf(folder.at("three"), AliasSteps::One), folder.at("link"));
    EXPECT_EQ(leadOf(folder.at("link")), "no alias") << "a link is none by itself";
    const auto entry = [&folder](const char *name) {
        return QByteArray("[Desktop Entry]\nType=Link\nURL=file://") + folder.at(name).c_str();
    };
    raw::write(folder.at("a.desktop"), entry("b.desktop"));
    raw::write(folder.at("b.desktop"), entry("a.desktop"));
    EXPECT_EQ(leadOf(folder.at("a.desktop")), statusText(errFSAliasLoop));
}

TEST(AliasFiles, AnAliasNeedsBothFlagAndResource) {
    const TemporaryFolder folder;
    FinderInfo info;
    info.flags = kIsAlias;
    EXPECT_EQ(writeFinderInfo(folder.file("flag alone").c_str(), info), noErr);
    EXPECT_EQ(leadOf(folder.at("flag alone")), "no alias");
    makeAlias(folder.path(), folder.at("alias"), AliasFileForm::Finder);
    EXPECT_EQ(removeFinderInfo(folder.at("alias").c_str()), noErr);
    EXPECT_EQ(leadOf(folder.at("alias")), "no alias");
    EXPECT_EQ(leadOf(folder.fifo("fifo")), "no alias");
}

/// How many bytes this thread has read so far; nullopt if the kernel does not count them.
std::optional<int64_t> bytesRead() {
    std::ifstream counts("/proc/thread-self/io");
    std::string name;
    int64_t count = 0;
    return counts >> name >> count ? std::optional(count) : std::nullopt;
}

/// A sparse sidecar with a fork of 255 MB: the first resource is at the beginning of the data, the
/// map at the end.
void writeLongFork(const std::string &sidecar, const QByteArray &record) {
    constexpr int64_t kLength = 255 << 20;
    constexpr int64_t kHeader = 256;
    ResourceMap map;
    map.put({samples::kAlias, 0, std::nullopt, 0, record});
    QByteArray fork = map.toBytes().value_or(QByteArray());
    const qsizetype data = record.size() + qsizetype(sizeof(uint32_t));
    const QByteArray mapBytes = fork.sliced(kHeader + data);
    putNumber(fork, 4, uint32_t(kLength - mapBytes.size()));
    putNumber(fork, 8, uint32_t(kLength - mapBytes.size() - kHeader));
    QByteArray start = AppleDouble::fresh().bytes();
    constexpr qsizetype kForkLength = 26 + 12 + 8; // in the second row of the table
    putNumber(start, kForkLength, uint32_t(kLength));
    raw::write(sidecar, start + fork.first(kHeader + data));
    fs::resize_file(sidecar, uintmax_t(start.size() + kLength));
    std::fstream file(sidecar);
    file.seekp(start.size() + kLength - mapBytes.size());
    file << mapBytes.toStdString();
}

TEST(AliasFiles, AreReadNoFurtherThanNeeded) {
    if (!bytesRead())
        GTEST_SKIP() << "the kernel does not count what is read";
    const TemporaryFolder folder;
    FinderInfo info;
    info.flags = kIsAlias;
    EXPECT_EQ(writeFinderInfo(folder.file("long fork").c_str(), info), noErr);
    const std::string target = folder.file("target");
    writeLongFork(folder.at("._long fork"), aliasOf(target));
    const QByteArray entry = ("[Desktop Entry]\nType=Link\nURL=file://" + target + "\n").c_str();
    raw::write(folder.at("long.desktop"), entry + QByteArray(1'000'000, '\n'));
    for (const char *const name : {"long fork", "long.desktop"}) {
        const int64_t before = *bytesRead();
        EXPECT_EQ(leadOf(folder.at(name)), target) << name;
        constexpr int64_t kMost = 400'000; // includes the mount table
        EXPECT_LT(*bytesRead() - before, kMost) << name;
    }
}

TEST(AliasFiles, RecordsThatAreTooLongAreNotRead) {
    const TemporaryFolder folder;
    QByteArray record = aliasOf(folder.file("target"));
    EXPECT_LT(record.size(), 1024);
    record +=
        QByteArray::fromHex("7777") + QByteArray::fromHex("00008000") + QByteArray(32768, 'x');
    EXPECT_EQ(resolved(record), statusText(mapReadErr));
    ResourceMap map;
    map.put({samples::kAlias, 0, std::nullopt, 0, record});
    FinderInfo info;
    info.flags = kIsAlias;
    EXPECT_EQ(writeFinderInfo(folder.file("alias").c_str(), info), noErr);
    EXPECT_EQ(writeResourceFork(folder.at("alias").c_str(), *map.toBytes()), noErr);
    EXPECT_EQ(leadOf(folder.at("alias")), "no alias");
}

TEST(AliasFiles, AFailedCreationLeavesNothing) {
    const MountedFolder mounted("tmpfs", "size=64k");
    if (!mounted.failureReason().empty())
        GTEST_SKIP() << mounted.failureReason();
    const FSRef ref = refTo(mounted.path());
    raw::write(mounted.at("filler"), QByteArray(64 * 1024, 'f'));
    for (const auto &[name, form] : {std::pair("alias", AliasFileForm::Finder),
                                     std::pair("alias.desktop", AliasFileForm::DesktopEntry)})
        EXPECT_EQ(FSCreateAliasFile(ref, mounted.at(name).c_str(), form), dskFulErr);
    EXPECT_EQ(std::distance(fs::directory_iterator(mounted.path()), {}), 1) << "only the filler";
}

TEST(FileUrls, CarryEveryByte) {
    QByteArray path = "/";
    for (int byte = 1; byte < 256; ++byte)
        path += static_cast<char>(byte);
    EXPECT_EQ(pathOfFileUrl(fileUrl(path)), path);
    EXPECT_EQ(pathOfFileUrl("FILE:///tmp"), "/tmp");
    EXPECT_EQ(pathOfFileUrl("file://"), std::nullopt);
    EXPECT_EQ(pathOfFileUrl("file:relative"), std::nullopt);
    EXPECT_EQ(pathOfFileUrl(""), std::nullopt);
}

TEST(ReferencesFromText, MakeAnEmptyFileOnlyWhenAsked) {
    const TemporaryFolder folder;
    const QString missing = QString::fromStdString(folder.at("new"));
    FSRef ref;
    FSSpec described;
    constexpr bool kCreate = true;
    EXPECT_FALSE(CarbonFSRefCreation::getFSRef(missing, &ref, !kCreate));
    EXPECT_FALSE(FSSpec::getFSSpec(missing, &described, !kCreate));
    EXPECT_TRUE(CarbonFSRefCreation::getFSRef(missing, &ref, kCreate));
    EXPECT_EQ(fs::file_size(folder.at("new")), 0U);
    EXPECT_EQ(ref.path, folder.at("new").c_str());
    raw::write(folder.at("new"), "kept");
    EXPECT_TRUE(FSSpec::getFSSpec(missing, &described, kCreate));
    EXPECT_EQ(raw::content(folder.at("new")), "kept");
    EXPECT_EQ(QByteArray(reinterpret_cast<char *>(described.name), 4), "\x03new");
    struct stat parent = {};
    stat(folder.path().c_str(), &parent);
    EXPECT_EQ(int32_t(described.parID), static_cast<int32_t>(parent.st_ino));
    EXPECT_TRUE(FSSpec::getFSSpec(
        QString::fromStdString(folder.file(std::string(62, 'n') + "\u00e9\u00e9")), &described,
        false));
    EXPECT_EQ(described.name[0], 62) << "no character is split";
    EXPECT_FALSE(
        CarbonFSRefCreation::getFSRef(QString::fromStdString(folder.at("no/file")), &ref, kCreate));
    (void)folder.link("dangling", "nowhere");
    EXPECT_FALSE(CarbonFSRefCreation::getFSRef(QString::fromStdString(folder.at("dangling")), &ref,
                                               kCreate));
    EXPECT_FALSE(CarbonFSRefCreation::getFSRef({}, &ref, kCreate));
}

} // namespace
