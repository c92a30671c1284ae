// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/launch/LaunchServices.h"

#include "platform/formats/ResourceMap.h"
#include "platform/metadata/MetadataStore.h"
#include "tests/platform/samples.h"
#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include <sys/mount.h>

#include <QLocale>

namespace {

using namespace MWCore;

struct FlagRow {
    const char *folder;
    std::vector<const char *> files; ///< in it; a name that ends in "/" is a folder
    uint16_t finderFlags;
    uint32_t flags;
};
const FlagRow kFlagRows[] = {
    {"plain", {"Info.plist"}, 0xDFFF, 0},
    {"a.app", {"Contents/Info.plist"}, 0, 0x6},
    {"b.App", {"Contents/Info.plist"}, 0, 0x6},
    {"c.app", {"Info.plist"}, 0, 0x2},
    {"d.app", {"Contents/Info.plist/"}, 0, 0x2},
    {".app", {"Contents/Info.plist"}, 0, 0},
    {"e.RTFD", {}, 0, 0x2},
    {"f.framework", {"Contents/Info.plist"}, 0, 0x2},
    {"by bit", {}, 0x2000, 0x2},
    {"AppDir", {"AppRun", "a.desktop"}, 0, 0x6},
    {"no entry", {"AppRun", "a.desktop/"}, 0, 0},
    {"AppRun is a folder", {"AppRun/", "a.desktop"}, 0, 0},
};

TEST(LaunchServices, FlagsFolders) {
    const TemporaryFolder folder;
    for (const FlagRow &row : kFlagRows) {
        const QByteArray path = folder.folder(row.folder).c_str();
        for (const char *const name : row.files) {
            const std::string file = std::string(row.folder) + '/' + name;
            file.ends_with('/') ? folder.folder(file) : folder.write(file, "");
        }
        LSItemInfoFlags flags = kLSItemInfoIsVolume;
        EXPECT_EQ(LSCopyItemInfoForPath(path, FinderFlags::fromInt(row.finderFlags), &flags), noErr)
            << row.folder;
        EXPECT_EQ(flags.toInt(), row.flags) << row.folder;
        EXPECT_EQ(LSCopyItemInfoForPath(path + '/', FinderFlags::fromInt(row.finderFlags), &flags),
                  noErr);
        EXPECT_EQ(flags.toInt(), row.flags) << row.folder << '/';
    }
}

TEST(LaunchServices, FlagsOnlyFolders) {
    const TemporaryFolder folder;
    LSItemInfoFlags flags = kLSItemInfoIsVolume;
    for (const std::string &path :
         {folder.file("a.app"), folder.link("b.app", "/proc"), folder.fifo("c.app")}) {
        EXPECT_EQ(LSCopyItemInfoForPath(path.c_str(), kHasBundle, &flags), noErr);
        EXPECT_EQ(flags.toInt(), 0U) << path;
    }
    EXPECT_EQ(LSCopyItemInfoForPath(folder.at("gone").c_str(), kHasBundle, &flags), fnfErr);
    EXPECT_EQ(flags.toInt(), 0U);
}

TEST(LaunchServices, RecognisesMountPoints) {
    const TemporaryFolder folder;
    for (const std::string &path : {std::string("/"), std::string("/proc"), std::string("/dev"),
                                    std::string("/usr"), folder.path()}) {
        LSItemInfoFlags flags;
        ASSERT_EQ(LSCopyItemInfoForPath(path.c_str(), {}, &flags), noErr);
        const bool isMountPoint = runProcess({"mountpoint", "-q", path}).status == 0;
        EXPECT_EQ(flags.testFlag(kLSItemInfoIsVolume), isMountPoint) << path;
    }
}

TEST(LaunchServices, NamesKinds) {
    QLocale::setDefault(QLocale::c());
    const TemporaryFolder folder;
    struct Row {
        std::string path;
        QString kind;
    };
    const Row rows[] = {
        {folder.folder("folder"), "folder"},
        {"/proc", "mount point"},
        {folder.link("link", "gone"), "symbolic link"},
        {folder.fifo("fifo"), "pipe"},
        {"/dev/null", "character device"},
        {folder.write("a.png", "no image"), "PNG image"},
        {folder.write("image", "\x89PNG\r\n\x1A\n"), "PNG image"},
        {folder.write("\xFF\xFE.png", ""), "PNG image"},
        {folder.write("\xFF", "plain text\n"), "plain text document"},
        {folder.write("empty", ""), "empty document"},
        {folder.at("gone"), QString()},
    };
    for (const Row &row : rows) {
        const QString kind = LSCopyKindString(row.path.c_str());
        EXPECT_EQ(kind.toLower(), row.kind.toLower()) << row.path;
        EXPECT_EQ(kind.isNull(), row.kind.isNull()) << row.path;
    }
}

/// Gives an item Finder information, and a fork with a resource of @p type.
void mark(const std::string &path, FinderFlags flags, uint32_t type = 0) {
    ASSERT_EQ(writeFinderInfo(path.c_str(), {.flags = flags}), noErr);
    ResourceMap map = *ResourceMap::parse({});
    map.put({type, 0, std::nullopt, 0, "of no form that leads anywhere"});
    if (type != 0) {
        ASSERT_EQ(writeResourceFork(path.c_str(), *map.toBytes()), noErr);
    }
}

TEST(LaunchServices, NamesAliasesAndPackages) {
    QLocale::setDefault(QLocale::c());
    using samples::kAlias;
    const TemporaryFolder folder;
    mark(folder.file("alias"), kIsAlias, kAlias);
    mark(folder.file("alias.png"), kIsAlias, kAlias);
    mark(folder.file("flag alone"), kIsAlias);
    mark(folder.file("icon"), kIsAlias, samples::kIcns);
    mark(folder.file("record alone"), {}, kAlias);
    mark(folder.file("huge"), kIsAlias, kAlias);
    constexpr int kForkLength = 46; // in the sidecar's table
    std::fstream(folder.at("._huge"), std::ios::in | std::ios::out).seekp(kForkLength) << "\x09";
    std::filesystem::resize_file(folder.at("._huge"), 160 << 20);
    mark(folder.file("damaged.png"), kIsAlias, kAlias);
    std::filesystem::resize_file(folder.at("._damaged.png"), 60);
    for (const char *const name : {"a.bundle", "b.RTFD", "c.pkg", "d.key", "e", "f"})
        folder.folder(name);
    for (const char *const name : {"d.key", "e"})
        mark(folder.at(name), kHasBundle);
    mark(folder.at("f"), kIsAlias);
    folder.write("a.app/Contents/Info.plist", "");
    folder.write("to file.desktop", "[Desktop Entry]\nType=Link\nURL=file:///gone\n");
    folder.write("to page.desktop", "[Desktop Entry]\nType=Link\nURL=https://localhost/\n");
    folder.write("program.desktop", "[Desktop Entry]\nType=Application\nURL=file:///gone\n");
    const struct {
        const char *name;
        const char *kind;
    } rows[] = {
        {"alias", "Alias"},
        {"alias.png", "Alias"},
        {"flag alone", "empty document"},
        {"icon", "empty document"},
        {"record alone", "empty document"},
        {"huge", "Alias"},
        {"damaged.png", "PNG image"},
        {"a.bundle", "Package"},
        {"b.RTFD", "Package"},
        {"c.pkg", "Package"},
        {"d.key", "Apple Keynote 5 presentation"},
        {"e", "Package"},
        {"f", "folder"},
        {"a.app", "Application"},
        {"to file.desktop", "Alias"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(LSCopyKindString(folder.at(row.name).c_str()), QLatin1String(row.kind))
            << row.name;
    EXPECT_EQ(LSCopyKindString(folder.at("a.bundle/").c_str()), "Package");
    const QString entry = LSCopyKindString(folder.file("any.desktop").c_str());
    for (const char *const name : {"to page.desktop", "program.desktop"})
        EXPECT_EQ(LSCopyKindString(folder.at(name).c_str()), entry) << name;
}

TEST(LaunchServices, NamesKindsInTheUsersLanguage) {
    QLocale::setDefault(QLocale(QLocale::German));
    EXPECT_EQ(LSCopyKindString("/proc/self"), "Symbolische Verknüpfung");
    QLocale::setDefault(QLocale::c());
}

/// The first bytes of an ELF file, with @p mark where an AppImage has its own.
std::string elf(const std::string &mark) {
    return "\x7F" + std::string("ELF\2\1\1\0", 7) + mark;
}

struct ApplicationRow {
    const char *name;
    std::string content;
    bool isApplication;
};
const ApplicationRow kApplicationRows[] = {
    {"AppImage 1", elf("AI\1 and more"), true},
    {"AppImage 2", elf("AI\2"), true},
    {"AppImage 3", elf("AI\3"), false},
    {"cut", elf("AI"), false},
    {"too short", "\x7F" + std::string("ELF"), false},
    {"no ELF", std::string("MWELF\2\1\0AI\2\0", 12), false},
    {"a.desktop", "[Desktop Entry]\nType=Application\n", true},
    {"b.desktop", "[Desktop Entry]\nType=Link\n", false},
    {"c.desktop", "[Other]\nType=Application\n", false},
    {"d.desktop.txt", "[Desktop Entry]\nType=Application\n", false},
    {"e.desktop", elf("AI\2"), true},
    {"f.desktop", "", false},
};

TEST(LaunchServices, RecognisesFilesThatAreApplications) {
    const TemporaryFolder folder;
    for (const ApplicationRow &row : kApplicationRows)
        EXPECT_EQ(isPlainFileApplication(folder.write(row.name, row.content).c_str()),
                  row.isApplication)
            << row.name;
    EXPECT_FALSE(isPlainFileApplication(folder.fifo("fifo.desktop").c_str()));
    EXPECT_FALSE(isPlainFileApplication(folder.link("link", "AppImage 1").c_str()));
    EXPECT_FALSE(isPlainFileApplication(folder.at("gone").c_str()));
}

} // namespace
