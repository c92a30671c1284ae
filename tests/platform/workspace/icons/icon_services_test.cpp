// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/icons/IconServices.h"

#include "platform/catalogue/FileCatalogue.h"
#include "platform/catalogue/ResourceFile.h"
#include "platform/workspace/themes/IconTheme.h"
#include "tests/support/TemporaryFolder.h"

#include <MWCore/IconElements.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

#include <QColor>
#include <QImage>

#include <sys/stat.h>

namespace {

namespace fs = std::filesystem;
using namespace MWCore;

const std::string kFamily("icns\0\0\0\x08", 8);
constexpr int16_t kCustom = -16455;

/// A home folder and themes of a test's own.
class IconServices : public ::testing::Test {
protected:
    IconServices() {
        for (const char *const variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
            setenv(variable, folder_.path().c_str(), 1);
        setenv("XDG_DATA_DIRS", "/usr/share", 1); // with the MIME database
        setenv("XDG_CONFIG_DIRS", folder_.at("config").c_str(), 1);
        IconTheme::setCurrentName("T");
    }

    [[nodiscard]] FSRef ref(const std::string &name) const {
        FSRef item;
        EXPECT_EQ(FSPathMakeRef(folder_.at(name).c_str(), &item), noErr) << name;
        return item;
    }

    /// What is drawn for the item, in one word: "custom", a file in the folder, or else a name.
    [[nodiscard]] std::string icon(const std::string &name) const {
        IconRef found;
        EXPECT_EQ(GetIconRefFromFileInfo(ref(name), &found), noErr) << name;
        if (!found.customIconOf.isEmpty())
            return "custom";
        return found.file.isEmpty()
                   ? found.themeNames.value(0).toStdString()
                   : fs::relative(found.file.toStdString(), folder_.path()).string();
    }

    void picture(const std::string &name, int size, Qt::GlobalColor color) const {
        (void)folder_.write(name, "");
        QImage image(size, size, QImage::Format_ARGB32);
        image.fill(color);
        ASSERT_TRUE(image.save(QString::fromStdString(folder_.at(name)), "PNG"));
    }

    /// Gives the item a custom icon, stored in the fork of @p holder.
    void setCustomIcon(const std::string &name, const std::string &holder) const {
        OSStatus status = noErr;
        const fs::path path = holder;
        FSRef item;
        (void)FSCreateResFile(ref(path.parent_path().string()), path.filename().c_str(), &item);
        const auto fork = ResourceFile::open(ref(holder), fsRdWrPerm, &status);
        ASSERT_TRUE(fork);
        EXPECT_EQ(fork->addResource(kIconFamilyType, kCustom, {}, "icns" + QByteArray(4, 'x')),
                  noErr);
        EXPECT_EQ(fork->close(), noErr);
        EXPECT_EQ(FSChangeFinderInfo(ref(name),
                                     [](FinderInfo &info) { info.flags.setFlag(kHasCustomIcon); }),
                  noErr);
    }

    TemporaryFolder folder_;
};

TEST_F(IconServices, ChooseTheIconOfAnItem) {
    (void)folder_.write("user-dirs.dirs", "# comment\nXDG_DOCUMENTS_DIR=\"$HOME/Papers\"\n"
                                          "XDG_MUSIC_DIR=\"/else\\\"where\"\nXDG_VIDEOS_DIR=x\n"
                                          "XDG_DOWNLOAD_DIR=\"$HOMELESS/a\"\n");
    for (const char *const name : {"Papers", "plain", "empty.app/Contents"})
        fs::create_directories(folder_.at(name));
    picture("p.png", 8, Qt::red);
    (void)folder_.write("text.txt", "text");
    (void)folder_.write("noextension", "\x89PNG\r\n\x1A\n");
    (void)folder_.fifo("fifo.png");
    (void)folder_.link("to folder", "Papers");
    (void)folder_.link("to nothing", "nothing");
    const std::string entry = "[Desktop Entry]\nType=Application\nExec=a\n";
    (void)folder_.write("named.desktop", entry + "Icon=thing\n");
    (void)folder_.write("file.desktop", entry + "Icon=" + folder_.at("p.png") + "\n");
    (void)folder_.write("device.desktop", entry + "Icon=/dev/zero\n");
    (void)folder_.write("above.desktop", entry + "Icon=../p.png\n");
    (void)folder_.write("fifo.desktop", entry + "Icon=" + folder_.at("fifo.png") + "\n");
    const auto bundle = [](const std::string &icon) {
        return "<plist><dict><key>CFBundleIconFile</key><string>" + icon +
               "</string></dict></plist>";
    };
    (void)folder_.write("A.app/Contents/Info.plist", bundle("A"));
    (void)folder_.write("A.app/Contents/Resources/A.icns", kFamily);
    (void)folder_.write("B.app/Contents/Info.plist", bundle("../../../p.png"));
    (void)folder_.write("C.app/Contents/Info.plist", bundle("C.icns"));
    fs::create_directories(folder_.at("C.app/Contents/Resources"));
    (void)folder_.link("C.app/Contents/Resources/C.icns", folder_.at("p.png"));
    (void)folder_.write("dir/AppRun", "");
    (void)folder_.write("dir/a.desktop", entry + "Icon=thing\n");
    (void)folder_.link("dir/.DirIcon", "thing.png");
    (void)folder_.write("bare/AppRun", "");
    (void)folder_.write("bare/a.desktop", entry + "Icon=thing\n");
    fs::copy(folder_.at("p.png"), folder_.at("dir/thing.png"));
    const struct {
        const char *item;
        const char *icon;
    } rows[] = {
        {".", "user-home"},
        {"Papers", "folder-documents"},
        {"plain", "folder"},
        {"empty.app", "folder"},
        {"p.png", "image-png"},
        {"text.txt", "text-plain"},
        {"noextension", "image-png"},
        {"fifo.png", "inode-fifo"},
        {"to folder", "folder-documents"},
        {"to nothing", "inode-symlink"},
        {"named.desktop", "thing"},
        {"file.desktop", "p.png"},
        {"device.desktop", "application-x-executable"},
        {"above.desktop", "application-x-executable"},
        {"fifo.desktop", "application-x-executable"},
        {"A.app", "A.app/Contents/Resources/A.icns"},
        {"B.app", "application-x-executable"},
        {"C.app", "application-x-executable"}, // its icon lies outside
        {"dir", "dir/thing.png"},
        {"bare", "thing"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(icon(row.item), row.icon) << row.item;
    IconRef device;
    FSRef null;
    ASSERT_EQ(FSPathMakeRef("/dev/null", &null), noErr);
    EXPECT_EQ(GetIconRefFromFileInfo(null, &device), noErr);
    EXPECT_EQ(device.themeNames.value(0), "inode-chardevice");
    IconRef gone;
    const FSRef text = ref("text.txt");
    fs::remove(folder_.at("text.txt"));
    EXPECT_EQ(GetIconRefFromFileInfo(text, &gone), fnfErr);
}

TEST_F(IconServices, PreferACustomIcon) {
    (void)folder_.write("file.txt", "text");
    fs::create_directory(folder_.at("folder"));
    (void)folder_.link("link", "folder");
    IconFamilyHandle family;
    EXPECT_EQ(customIconOf(ref("file.txt"), &family), resNotFound);
    EXPECT_EQ(icon("file.txt"), "text-plain");
    setCustomIcon("file.txt", "file.txt");
    setCustomIcon("folder", "folder/Icon\r");
    for (const char *const name : {"file.txt", "folder"}) {
        EXPECT_EQ(customIconOf(ref(name), &family), noErr);
        EXPECT_EQ(family, "icnsxxxx") << name;
        EXPECT_EQ(icon(name), "custom");
    }
    EXPECT_EQ(icon("link"), "custom");
    fs::remove_all(folder_.at("folder/Icon\r"));
    EXPECT_EQ(customIconOf(ref("folder"), &family), resNotFound);
    IconRef flagged;
    EXPECT_EQ(GetIconRefFromFileInfo(ref("folder"), &flagged), noErr);
    EXPECT_EQ(IconRefToIconFamily(flagged, kSelectorAllAvailableData, &family), noErr);
    EXPECT_GT(family.size(), 1000) << "the flag alone is no icon";
}

TEST_F(IconServices, ReadAFamilyFromAFile) {
    (void)folder_.write("good.icns", kFamily);
    (void)folder_.link("link.icns", "good.icns");
    (void)folder_.write("other.icns", "RIFF");
    (void)folder_.fifo("fifo.icns");
    (void)folder_.write("long.icns", kFamily);
    fs::resize_file(folder_.at("long.icns"), kLongestIconFile + 1);
    IconFamilyHandle family;
    for (const char *const name : {"good.icns", "link.icns"}) {
        EXPECT_EQ(ReadIconFromFSRef(ref(name), &family), noErr) << name;
        EXPECT_EQ(family.toStdString(), kFamily);
    }
    EXPECT_EQ(ReadIconFromFSRef(ref("other.icns"), &family), mapReadErr);
    EXPECT_EQ(ReadIconFromFSRef(ref("fifo.icns"), &family), errFSOperationNotSupported);
    EXPECT_EQ(ReadIconFromFSRef(ref("long.icns"), &family), fileBoundsErr);
}

/// The colour in the middle of an element; invalid if the element is missing.
QColor middle(const IconFamilyHandle &family, uint32_t type) {
    OSStatus status = noErr;
    const auto data = GetIconFamilyData(family, type, &status);
    const QSize size = iconElementType(type)->size;
    if (!data || data->size() < size.width() * size.height() * 4)
        return {};
    const qsizetype at = (size.width() / 2 + size.width() * qsizetype(size.height() / 2)) * 4;
    return {uint8_t(data->at(at + 1)), uint8_t(data->at(at + 2)), uint8_t(data->at(at + 3))};
}

TEST_F(IconServices, DrawEachSizeAsTheThemeHasIt) {
    (void)folder_.write("icons/T/index.theme",
                        "[Icon Theme]\nDirectories=16,16@2,s\n[16]\nSize=16\nType=Fixed\n"
                        "[16@2]\nSize=16\nScale=2\nType=Fixed\n"
                        "[s]\nSize=64\nMinSize=17\nMaxSize=512\nType=Scalable\n");
    picture("icons/T/16/folder-documents.png", 16, Qt::red);
    picture("icons/T/16@2/folder-documents.png", 32, Qt::green);
    (void)folder_.write("icons/T/s/folder-documents.svg",
                        "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"8\" height=\"8\">"
                        "<rect width=\"8\" height=\"8\" fill=\"#0000ff\"/></svg>");
    (void)folder_.write("icons/T/s/folder.svg", "damaged");
    IconRef documents;
    ASSERT_EQ(GetIconRef(kOnSystemDisk, kSystemIconsCreator, fourCharCode("docs"), &documents),
              noErr);
    IconFamilyHandle family;
    ASSERT_EQ(IconRefToIconFamily(documents, kSelectorAllAvailableData, &family), noErr);
    const struct {
        const char (&type)[5];
        Qt::GlobalColor color;
    } rows[] = {
        {"is32", Qt::red},  {"ic04", Qt::red},  {"ic11", Qt::green}, {"il32", Qt::blue},
        {"ic05", Qt::blue}, {"ic12", Qt::blue}, {"ih32", Qt::blue},  {"it32", Qt::blue},
        {"ic07", Qt::blue}, {"ic13", Qt::blue}, {"ic08", Qt::blue},  {"ic14", Qt::blue},
        {"ic09", Qt::blue}, {"ic10", Qt::blue},
    };
    for (const auto &row : rows)
        EXPECT_EQ(middle(family, fourCharCode(row.type)), QColor(row.color)) << row.type;
    OSStatus status = noErr;
    for (const auto &mask :
         {fourCharCode("s8mk"), fourCharCode("l8mk"), fourCharCode("h8mk"), fourCharCode("t8mk")})
        EXPECT_EQ(GetIconFamilyData(family, mask, &status).value_or("none").count('\xFF'),
                  iconElementType(mask)->size.width() * iconElementType(mask)->size.height());
    EXPECT_EQ(IconRefToIconFamily(documents, 1, &family), paramErr);

    IconRef folder;
    ASSERT_EQ(GetIconRef(kOnSystemDisk, kSystemIconsCreator, fourCharCode("fldr"), &folder), noErr);
    IconFamilyHandle own;
    EXPECT_EQ(IconRefToIconFamily(folder, kSelectorAllAvailableData, &own), noErr);
    EXPECT_TRUE(middle(own, fourCharCode("ic08")).isValid()) << "no drawing of our own";
    IconRef named;
    named.file = folder_.at("icons/T/16/folder-documents.png").c_str();
    EXPECT_EQ(IconRefToIconFamily(named, kSelectorAllAvailableData, &own), noErr);
    EXPECT_EQ(middle(own, fourCharCode("ic08")), QColor(Qt::red));

    EXPECT_EQ(GetIconRef(0, kSystemIconsCreator, fourCharCode("fldr"), &folder), fnfErr);
    EXPECT_EQ(GetIconRef(kOnSystemDisk, fourCharCode("MACS"), fourCharCode("fldr"), &folder),
              fnfErr);
    EXPECT_EQ(GetIconRef(kOnSystemDisk, kSystemIconsCreator, fourCharCode("none"), &folder),
              fnfErr);
}

} // namespace
