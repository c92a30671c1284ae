// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/platform/metadata/attributes.h"
#include "tests/platform/metadata/finder_info.h"
#include "tests/platform/samples.h"
#include "tests/support/LoggedMessages.h"
#include "tests/support/MountedFolder.h"
#include "tests/support/Process.h"

#include <gtest/gtest.h>

#include <filesystem>

#include <sys/stat.h>
#include <unistd.h>

namespace {

using namespace MWCore;

constexpr const char *kRecord = "user.org.netatalk.Metadata";
constexpr const char *kStream = "user.DosStream.AFP_AfpInfo:$DATA";

std::string sidecarOf(const TemporaryFolder &folder, const std::string &name) {
    return folder.at("._" + name);
}

/// A format of Finder information with the given flags; @p attribute is null for a sidecar.
struct FormRow {
    const char *what;
    const char *attribute;
    QByteArray (*sample)(uint16_t flags);
};
constexpr FormRow kForms[] = {
    {"the bytes alone", kBare, samples::finderInfo},
    {"an AppleDouble record", kRecord, samples::netatalkRecord},
    {"AFP information", kStream, [](uint16_t flags) { return samples::afpInfo(flags, false); }},
    {"with one byte more", kStream, [](uint16_t flags) { return samples::afpInfo(flags, true); }},
    {"a sidecar", nullptr, [](uint16_t flags) { return samples::sidecar(flags); }},
};

void keep(const TemporaryFolder &folder, const FormRow &form, uint16_t flags) {
    if (form.attribute)
        ASSERT_TRUE(raw::setAttribute(folder.at("item"), form.attribute, form.sample(flags)));
    else
        raw::write(sidecarOf(folder, "item"), form.sample(flags));
}

std::optional<QByteArray> kept(const TemporaryFolder &folder, const FormRow &form) {
    return form.attribute ? raw::attribute(folder.at("item"), form.attribute)
                          : raw::content(sidecarOf(folder, "item"));
}

TEST(FinderInformation, EveryFormatIsReadAndOnlyItsOwnBytesAreRewritten) {
    for (const FormRow &form : kForms) {
        SCOPED_TRACE(form.what);
        const TemporaryFolder folder;
        raw::write(folder.file("item"), "data");
        keep(folder, form, kRed | kHasCustomIcon);
        struct stat before = {};
        stat(folder.at("item").c_str(), &before);
        const FinderInfo info = infoOf(folder.at("item"));
        EXPECT_EQ(info.toBytes(), samples::finderInfo(kRed | kHasCustomIcon));
        EXPECT_EQ(info.type, 0x54455854U);
        EXPECT_EQ(info.labelNumber(), 6);
        EXPECT_EQ(info.locationV, 16);

        EXPECT_EQ(writeLabel(folder.at("item"), 2), noErr);
        EXPECT_EQ(kept(folder, form), form.sample(kGreen | kHasCustomIcon));
        for (const FormRow &other : kForms) {
            if (other.attribute != form.attribute) {
                EXPECT_EQ(kept(folder, other), std::nullopt) << other.what;
            }
        }
        struct stat after = {};
        stat(folder.at("item").c_str(), &after);
        EXPECT_EQ(raw::content(folder.at("item")), "data");
        EXPECT_EQ(after.st_mtim.tv_nsec, before.st_mtim.tv_nsec);
        EXPECT_EQ(after.st_mode, before.st_mode);
        EXPECT_EQ(after.st_ino, before.st_ino);

        EXPECT_EQ(removeFinderInfo(folder.at("item").c_str()), noErr);
        EXPECT_TRUE(infoOf(folder.at("item")).isNone());
        EXPECT_EQ(kept(folder, form).has_value(), form.attribute != kBare)
            << "other data in a place is preserved";
    }
}

TEST(FinderInformation, EveryPlaceIsWrittenAndDisagreementIsLogged) {
    const TemporaryFolder folder;
    const std::string item = folder.file("item");
    for (const FormRow &form : kForms)
        keep(folder, form, kRed);
    LoggedMessages log;
    EXPECT_EQ(infoOf(item).labelNumber(), 6);
    EXPECT_EQ(log.take(), QStringList());
    keep(folder, kForms[4], kGreen);
    EXPECT_EQ(infoOf(item).labelNumber(), 6) << "the first in the order counts";
    const QStringList lines = log.take();
    ASSERT_EQ(lines.size(), 1);
    EXPECT_TRUE(lines[0].contains(kBare) && lines[0].contains("._ file")) << lines[0].toStdString();
    raw::setAttribute(item, kBare, samples::zeros(32));
    keep(folder, kForms[4], kRed);
    EXPECT_EQ(infoOf(item).labelNumber(), 6) << "an empty place does not count";
    EXPECT_EQ(log.take(), QStringList());
    EXPECT_EQ(writeLabel(item, 2), noErr);
    for (const FormRow *const form : {&kForms[0], &kForms[1], &kForms[3], &kForms[4]})
        EXPECT_EQ(kept(folder, *form), form->sample(kGreen)) << form->what;
}

TEST(FinderInformation, ANameCannotForgeALogLine) {
    const TemporaryFolder folder;
    const std::string item = folder.file("\033[2Jitem\nmwcore: all is well");
    raw::setAttribute(item, kBare, samples::finderInfo(kRed));
    raw::setAttribute(item, kStream, samples::afpInfo(kGreen, false));
    LoggedMessages log;
    EXPECT_EQ(infoOf(item).labelNumber(), 6);
    const QStringList lines = log.take();
    ASSERT_EQ(lines.size(), 1);
    EXPECT_FALSE(lines[0].contains('\n') || lines[0].contains('\033')) << lines[0].toStdString();
}

TEST(FinderInformation, AChangePreservesTheOtherFieldsOfEachPlace) {
    const TemporaryFolder folder;
    const std::string item = folder.file("item");
    EXPECT_EQ(writeLabel(item, 2), noErr);
    constexpr uint16_t kYellow = 5 << 1; // has a bit that green and blue both lack
    keep(folder, kForms[1], kYellow | kHasCustomIcon);
    keep(folder, kForms[2], 0);
    const LoggedMessages log;
    FinderInfo info = infoOf(item);
    EXPECT_EQ(info.type, 0U) << "the first place counts as a whole";
    info.setLabelNumber(4);
    info.flags.setFlag(kIsInvisible, true);
    EXPECT_EQ(writeFinderInfo(item.c_str(), info), noErr);
    EXPECT_EQ(infoOf(item), info);
    constexpr uint16_t kBlue = 4 << 1;
    EXPECT_EQ(kept(folder, kForms[1]),
              samples::netatalkRecord(kBlue | kHasCustomIcon | kIsInvisible));
    EXPECT_EQ(kept(folder, kForms[2]), samples::afpInfo(kBlue | kIsInvisible, false));
    EXPECT_EQ(writeFinderInfo(item.c_str(), FinderInfo()), noErr);
    EXPECT_EQ(raw::attribute(item, kBare), std::nullopt);
    EXPECT_EQ(kept(folder, kForms[1]), samples::netatalkRecord(kHasCustomIcon))
        << "clearing a label preserves the other fields of each place";
    EXPECT_EQ(removeFinderInfo(item.c_str()), noErr);
    EXPECT_TRUE(infoOf(item).isNone()) << "every place is cleared";
}

TEST(FinderInformation, UnknownFormatsAreNeitherReadNorOverwritten) {
    for (const char *const name : {kBare, kRecord, kStream})
        for (const qsizetype length : {0, 31, 33, 59, 60, 61, 342, 402, 4000}) {
            const TemporaryFolder folder;
            const QByteArray value(length, 'x');
            if (!raw::setAttribute(folder.file("item"), name, value))
                continue; // too much for the file system
            EXPECT_TRUE(infoOf(folder.at("item")).isNone()) << name << " " << length;
            const OSStatus status = writeLabel(folder.at("item"), 6);
            EXPECT_EQ(status, name == kBare ? mapReadErr : noErr);
            EXPECT_EQ(raw::attribute(folder.at("item"), name), value) << name << " " << length;
        }
    const TemporaryFolder folder;
    raw::write(folder.file("item"), "");
    raw::write(sidecarOf(folder, "item"), "somebody's notes");
    EXPECT_TRUE(infoOf(folder.at("item")).isNone());
    EXPECT_EQ(writeResourceFork(folder.at("item").c_str(), "fork"), mapReadErr);
    EXPECT_EQ(raw::content(sidecarOf(folder, "item")), "somebody's notes");
    FinderInfo info;
    raw::write(sidecarOf(folder, "item"), samples::sidecar(kRed).first(60));
    EXPECT_EQ(readFinderInfo(folder.at("item").c_str(), &info), mapReadErr);
    EXPECT_EQ(readFinderInfo(folder.at("item").c_str(), &info, Sidecars::Absent), noErr);
}

TEST(FinderInformation, ARecordIsReadByItsTable) {
    // The older form: five entries, 342 bytes, the Finder information at another offset.
    QByteArray record =
        samples::hex("0005160700020000") + samples::zeros(16) + samples::number16(5);
    for (const auto &[id, offset, length] : std::initializer_list<std::array<uint32_t, 3>>{
             {4, 86, 200}, {9, 286, 32}, {8, 318, 16}, {14, 334, 4}, {3, 338, 4}})
        record += samples::number32(id) + samples::number32(offset) + samples::number32(length);
    record += samples::zeros(200) + samples::finderInfo(kRed) + samples::zeros(24);
    ASSERT_EQ(record.size(), 342);
    const TemporaryFolder folder;
    raw::setAttribute(folder.file("item"), kRecord, record);
    EXPECT_EQ(infoOf(folder.at("item")).labelNumber(), 6);
}

TEST(FinderInformation, OnlyFilesAndFoldersCanHaveIt) {
    const TemporaryFolder folder;
    (void)folder.fifo("fifo");
    raw::write(folder.file("file"), "");
    (void)folder.link("link", "file");
    (void)folder.link("dangling", "nowhere");
    for (const std::string &path :
         {folder.at("fifo"), folder.at("link"), folder.at("dangling"), std::string("/dev/null")}) {
        EXPECT_TRUE(infoOf(path).isNone()) << path;
        EXPECT_EQ(writeLabel(path, 6), errFSOperationNotSupported) << path;
        EXPECT_EQ(writeResourceFork(path.c_str(), "fork"), errFSOperationNotSupported) << path;
    }
    EXPECT_TRUE(infoOf(folder.at("file")).isNone()) << "the link was not followed";
    FinderInfo info;
    EXPECT_EQ(readFinderInfo(folder.at("gone").c_str(), &info), fnfErr);
    EXPECT_EQ(writeFinderInfo(folder.at("gone").c_str(), info), fnfErr);
    EXPECT_EQ(infoOf("/"), FinderInfo());
    const std::string longName(250, 'n');
    EXPECT_TRUE(infoOf(folder.file(longName)).isNone());
    raw::write(sidecarOf(folder, "link"), samples::sidecar(kRed));
    EXPECT_EQ(infoOf(folder.at("link")).labelNumber(), 6) << "a sidecar can hold that of a link";
    EXPECT_EQ(writeLabel(folder.at("link"), 2), noErr);
}

TEST(FinderInformation, SidecarsThatAreNotRegularFilesAreNeverOpened) {
    const TemporaryFolder folder;
    (void)folder.file("item");
    (void)folder.fifo("._item");
    EXPECT_TRUE(infoOf(folder.at("item")).isNone());
    (void)folder.file("other");
    raw::write(folder.at("secret"), samples::sidecar(kRed));
    (void)folder.link("._other", "secret");
    EXPECT_TRUE(infoOf(folder.at("other")).isNone());
    EXPECT_NE(writeResourceFork(folder.at("other").c_str(), "fork"), noErr);
    EXPECT_EQ(raw::content(folder.at("secret")), samples::sidecar(kRed));
}

TEST(FinderInformation, AForkThatOutgrowsItsAttributeMovesToTheSidecar) {
    const TemporaryFolder folder;
    const std::string item = folder.file("item");
    for (const char *name : {"user.com.apple.ResourceFork", "user.org.netatalk.ResourceFork"})
        raw::setAttribute(item, name, "fork");
    const QByteArray longer(100'000, 'f');
    EXPECT_EQ(writeResourceFork(item.c_str(), longer), noErr);
    OSStatus status = ioErr;
    EXPECT_EQ(readResourceFork(item.c_str(), &status), longer);
    EXPECT_EQ(raw::attribute(item, "user.com.apple.ResourceFork"), std::nullopt);
    EXPECT_EQ(raw::attribute(item, "user.org.netatalk.ResourceFork"), std::nullopt);
}

TEST(FinderInformation, EachFileSystemStoresItWhereItCan) {
    const struct {
        const char *type;
        bool hasAttributes;
    } rows[] = {{"ext4", true}, {"tmpfs", true}, {"xfs", true}, {"btrfs", true}, {"ramfs", false}};
    for (const auto &row : rows) {
        const MountedFolder mounted(row.type);
        if (!mounted.failureReason().empty()) {
            std::printf("skipped: %s\n", mounted.failureReason().c_str());
            continue;
        }
        SCOPED_TRACE(row.type);
        for (const char *const name : {"file", "folder"}) {
            const std::string item = mounted.at(name);
            if (std::string_view(name) == "file")
                raw::write(item, "data");
            else
                std::filesystem::create_directory(item);
            EXPECT_EQ(writeLabel(item, 6), noErr);
            EXPECT_EQ(infoOf(item).labelNumber(), 6);
            EXPECT_EQ(raw::attribute(item, kBare).has_value(), row.hasAttributes);
            const std::string sidecar = mounted.at("._" + std::string(name));
            EXPECT_EQ(std::filesystem::exists(sidecar), !row.hasAttributes);
            EXPECT_EQ(removeFinderInfo(item.c_str()), noErr);
            EXPECT_EQ(raw::attribute(item, kBare), std::nullopt);
            EXPECT_FALSE(std::filesystem::exists(sidecar));
        }
    }
}

TEST(FinderInformation, TheOwnerCanReadAndChangeWhatTheSuperuserWrote) {
    const MountedFolder mounted("ramfs");
    if (!mounted.failureReason().empty())
        GTEST_SKIP() << mounted.failureReason();
    std::filesystem::permissions(mounted.path(), std::filesystem::perms::all);
    const std::string item = mounted.at("item");
    ASSERT_EQ(runAsNobody([&item] {
                  raw::write(item, "private");
                  return chmod(item.c_str(), 0600);
              }),
              0);
    EXPECT_EQ(writeLabel(item, 6), noErr);
    EXPECT_EQ(runAsNobody([&item] {
                  return infoOf(item).labelNumber() == 6 && writeLabel(item, 2) == noErr ? 0 : 1;
              }),
              0);
}

TEST(FinderInformation, AFailedWriteReportsTheCauseAndChangesNothing) {
    const MountedFolder mounted("tmpfs", "size=64k");
    if (!mounted.failureReason().empty())
        GTEST_SKIP() << mounted.failureReason();
    const std::string item = mounted.at("item");
    const std::string sidecar = mounted.at("._item");
    raw::write(item, "data");
    raw::write(sidecar, samples::sidecar(kRed));
    raw::write(mounted.at("filler"), QByteArray(64 * 1024, 'f'));
    EXPECT_EQ(writeLabel(item, 2), dskFulErr);
    EXPECT_EQ(raw::content(sidecar), samples::sidecar(kRed));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(mounted.path()), {}), 3)
        << "no temporary file is left";
    std::filesystem::remove(mounted.at("filler"));
    raw::setAttribute(item, "user.com.apple.ResourceFork", "fork");
    EXPECT_EQ(writeResourceFork(item.c_str(), QByteArray(70'000, 'f')), dskFulErr);
    EXPECT_EQ(raw::attribute(item, "user.com.apple.ResourceFork"), "fork");

    ASSERT_TRUE(mounted.remount("ro"));
    EXPECT_EQ(writeLabel(item, 2), wPrErr);
    EXPECT_EQ(infoOf(item).labelNumber(), 6);
    EXPECT_EQ(raw::content(sidecar), samples::sidecar(kRed));
}

} // namespace
