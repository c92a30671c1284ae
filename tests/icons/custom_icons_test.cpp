// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "icons/IconFamily.h"
#include "platform/catalogue/ItemMetadata.h"
#include "platform/catalogue/ResourceFile.h"
#include "tests/platform/metadata/attributes.h"
#include "tests/support/MountedFolder.h"
#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <random>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>

using namespace MWCore;

namespace {

constexpr uint32_t kIcns = fourCharCode("icns");
constexpr int16_t kIconId = -16455;
constexpr const char *kFinderInfo = "user.com.apple.FinderInfo";

QString textOf(const std::string &path) {
    return QString::fromStdString(path);
}

/// A family that looks like no other @p number; about 70 KB, too long for an attribute.
IconFamily::Ptr numberedFamily(int number) {
    std::mt19937 random(static_cast<unsigned>(number));
    IconFamilyHandle bytes;
    QByteArray pixels(128 * 128 * 4, '\0');
    for (char &byte : pixels)
        byte = static_cast<char>(random());
    EXPECT_EQ(SetIconFamilyData(bytes, fourCharCode("it32"), pixels), noErr);
    EXPECT_EQ(SetIconFamilyData(bytes, fourCharCode("ics8"), pixels.first(256)), noErr);
    return IconFamily::initWithData(bytes);
}

std::optional<QByteArray> resource(const std::string &path, uint32_t type) {
    FSRef ref;
    OSStatus status = FSPathMakeRef(path.c_str(), &ref);
    const auto fork = status == noErr ? ResourceFile::open(ref, fsRdPerm, &status) : nullptr;
    return fork ? fork->getResource(type, kIconId) : std::nullopt;
}

FinderInfo infoOf(const std::string &path) {
    return ItemMetadata::read(path.c_str()).finderInfo().value_or(FinderInfo());
}

timespec modificationTime(const std::string &path) {
    struct stat item = {};
    EXPECT_EQ(lstat(path.c_str(), &item), 0);
    return item.st_mtim;
}

bool isSameTime(const timespec &one, const timespec &other) {
    return one.tv_sec == other.tv_sec && one.tv_nsec == other.tv_nsec;
}

void setOldTime(const std::string &path) {
    const timespec times[] = {{1'000'000'000, 1}, {1'000'000'000, 2}};
    ASSERT_EQ(utimensat(AT_FDCWD, path.c_str(), times, 0), 0);
}

/// Calls @p check with the path of a folder on a file system with extended attributes and of one
/// without.
template <typename Check> void onEachFileSystem(Check check) {
    for (const char *type : {"tmpfs", "ramfs"}) {
        SCOPED_TRACE(type);
        const MountedFolder mounted(type);
        if (mounted.failureReason().empty())
            check(mounted.path(), std::string_view(type) == "tmpfs");
        else
            std::printf("skipped: %s\n", mounted.failureReason().c_str());
    }
}

} // namespace

TEST(CustomIcons, OfAFile) {
    onEachFileSystem([](const std::string &folder, bool hasAttributes) {
        const std::string path = folder + "/a file";
        raw::write(path, "data");
        QByteArray before(FinderInfo::kLength, '\0');
        before.replace(0, 10, QByteArray("TEXTttxt\x41\x02", 10)); // invisible, inited, labelled
        before[8] = '\x41';
        if (hasAttributes) {
            ASSERT_TRUE(raw::setAttribute(path, kFinderInfo, before));
        }
        setOldTime(path);
        const timespec time = modificationTime(path);
        for (const int number : {1, 2}) {
            const auto family = numberedFamily(number);
            ASSERT_TRUE(family->setAsCustomIconForFile(textOf(path), number == 2));
            EXPECT_EQ(resource(path, kIcns), family->data());
            EXPECT_EQ(resource(path, fourCharCode("ics8")).has_value(), number == 2);
            EXPECT_EQ(resource(path, fourCharCode("icl8")), std::nullopt);
        }
        EXPECT_EQ(raw::attribute(path, kFinderInfo).has_value(), hasAttributes);
        EXPECT_EQ(infoOf(path).flags.toInt(), hasAttributes ? 0x4402 : 0x0400);
        ASSERT_TRUE(IconFamily::removeCustomIconFromFile(textOf(path)));
        EXPECT_EQ(infoOf(path).flags.toInt(), hasAttributes ? 0x4002 : 0);
        EXPECT_EQ(resource(path, kIcns), std::nullopt);
        EXPECT_TRUE(resource(path, fourCharCode("ics8"))) << "the other resources stay";
        EXPECT_TRUE(IconFamily::removeCustomIconFromFile(textOf(path)));
        EXPECT_TRUE(isSameTime(modificationTime(path), time));
        EXPECT_EQ(raw::content(path), "data");
    });
}

TEST(CustomIcons, OfAFolder) {
    onEachFileSystem([](const std::string &parent, bool hasAttributes) {
        const std::string folder = parent + "/folder";
        const std::string iconFile = folder + "/Icon\r";
        ASSERT_TRUE(std::filesystem::create_directory(folder));
        raw::write(iconFile, "an older one");
        if (hasAttributes)
            raw::setAttribute(iconFile, "user.com.apple.ResourceFork", "an older fork");
        setOldTime(folder);
        const timespec time = modificationTime(folder);
        FinderInfo expected;
        expected.type = fourCharCode("icon");
        expected.creator = fourCharCode("MACS");
        expected.flags = kIsInvisible;
        for (const int number : {1, 2}) {
            const auto family = numberedFamily(number);
            ASSERT_TRUE(family->setAsCustomIconForDirectory(textOf(folder), number == 1));
            EXPECT_EQ(resource(iconFile, kIcns), family->data());
            EXPECT_EQ(resource(iconFile, fourCharCode("ics8")).has_value(), number == 1);
            EXPECT_EQ(infoOf(iconFile), expected);
            EXPECT_EQ(raw::content(iconFile), "");
            EXPECT_EQ(infoOf(folder).flags.toInt(), 0x0400);
        }
        EXPECT_EQ(raw::attribute(iconFile, kFinderInfo).has_value(), hasAttributes);
        EXPECT_FALSE(isSameTime(modificationTime(folder), time));
        EXPECT_TRUE(IconFamily::removeCustomIconFromDirectory(textOf(folder)));
        EXPECT_TRUE(std::filesystem::is_empty(folder)) << "the sidecar went with the file";
        EXPECT_EQ(infoOf(folder).flags.toInt(), 0);
        EXPECT_FALSE(IconFamily::removeCustomIconFromDirectory(textOf(folder)));
    });
}

TEST(CustomIcons, AreRefusedWhereTheyCannotBe) {
    const TemporaryFolder folder;
    const auto family = numberedFamily(1);
    const std::string fifo = folder.fifo("fifo");
    const std::string dangling = folder.link("dangling", "nothing");
    const std::string subfolder = folder.folder("subfolder");
    const std::string link = folder.link("link", "subfolder");
    const std::string file = folder.file("file");
    (void)folder.folder("subfolder/Icon\r");
    for (const std::string &path : {fifo, dangling, subfolder, link, folder.at("no/where")})
        EXPECT_FALSE(family->setAsCustomIconForFile(textOf(path))) << path;
    for (const std::string &path : {fifo, dangling, subfolder, link, file, folder.at("none")})
        EXPECT_FALSE(family->setAsCustomIconForDirectory(textOf(path))) << path;
    for (const std::string &path : {fifo, dangling, subfolder, file, folder.at("none")})
        EXPECT_FALSE(IconFamily::removeCustomIconFromFile(textOf(path))) << path;
    EXPECT_FALSE(IconFamily::removeCustomIconFromDirectory(textOf(subfolder)));
    EXPECT_FALSE(std::filesystem::exists(folder.at("nothing")));
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 5)
        << "nothing is left behind";
    EXPECT_TRUE(family->setAsCustomIconForFile(textOf(folder.at("new"))));
    EXPECT_EQ(raw::content(folder.at("new")), "") << "a file that does not exist is created";
}

TEST(CustomIcons, AFailureLosesNothing) {
    const MountedFolder mounted("tmpfs", "size=600k");
    if (!mounted.failureReason().empty())
        GTEST_SKIP() << mounted.failureReason();
    const std::string folder = mounted.at("folder");
    const std::string file = mounted.at("file");
    std::filesystem::create_directory(folder);
    raw::write(file, "data");
    const auto family = numberedFamily(1);
    const auto other = numberedFamily(2);
    ASSERT_TRUE(family->setAsCustomIconForFile(textOf(file)));
    ASSERT_TRUE(family->setAsCustomIconForDirectory(textOf(folder)));
    const auto expectOld = [&] {
        EXPECT_FALSE(other->setAsCustomIconForFile(textOf(file)));
        EXPECT_FALSE(other->setAsCustomIconForDirectory(textOf(folder)));
        EXPECT_EQ(resource(file, kIcns), family->data());
        EXPECT_EQ(resource(folder + "/Icon\r", kIcns), family->data());
        EXPECT_EQ(infoOf(file).flags, FinderFlags(kHasCustomIcon));
    };
    std::ofstream(mounted.at("filler")) << std::string(1 << 20, 'f'); // as much as there is room
    expectOld();
    std::filesystem::remove(mounted.at("filler"));
    ASSERT_TRUE(mounted.remount("ro"));
    expectOld();
    ASSERT_TRUE(mounted.remount("rw"));
    const int status = runAsNobody([&] {
        return other->setAsCustomIconForFile(textOf(file)) ||
               other->setAsCustomIconForDirectory(textOf(folder));
    });
    EXPECT_EQ(status, 0) << "another user changed them";
}
