// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/aliases/Aliases.h"
#include "platform/catalogue/FileCatalogue.h"
#include "platform/foundation/FrameworkResources.h"
#include "tests/model/items.h"
#include "tests/platform/samples.h"
#include "tests/support/MountedFolder.h"
#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"

#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <memory>
#include <thread>

#include <gtest/gtest.h>
#include <QBuffer>
#include <QImageReader>
#include <QPainter>

namespace {

namespace fs = std::filesystem;
using namespace MWCore;
using Record = std::unique_ptr<mfs_fso, decltype(&mfs_fso_destroy_tree)>;

constexpr bool kCached = true;
constexpr bool kFresh = false;

/// @p base with a badge over it, composed by Qt.
QImage badged(const ItemIcon::Ptr &base, const char *badge) {
    QImage image = base->image();
    auto bytes =
        FrameworkResources::data(QString::fromLatin1(badge), "tiff").value_or(QByteArray());
    QBuffer buffer(&bytes);
    const QImage over = QImageReader(&buffer, "tiff").read();
    EXPECT_EQ(over.size(), image.size()) << "the first page of " << badge;
    QPainter(&image).drawImage(0, 0, over);
    return image;
}

/// Whether no channel differs by more than rounding does.
bool areAlike(const QImage &one, const QImage &other) {
    if (one.isNull() || one.size() != other.size() || one.format() != other.format())
        return false;
    for (int y = 0; y < one.height(); ++y)
        for (qsizetype x = 0; x < one.bytesPerLine(); ++x)
            if (std::abs(one.constScanLine(y)[x] - other.constScanLine(y)[x]) > 2)
                return false;
    return true;
}

ItemIcon::Ptr iconOf(const std::string &path) {
    return itemAt(path)->iconForFSOUsingCached(kFresh);
}

MXFileSystemObject::Ptr itself(const std::string &path) {
    return MXFileSystemObject::newFSOForLocalItem(text(path));
}

TEST(Icons, OfLinksAndAliasesHaveTheirTargetsWithABadge) {
    const TemporaryFolder folder;
    (void)folder.folder("folder");
    (void)folder.write("file.txt", "text");
    (void)folder.link("to folder", "folder");
    (void)folder.link("to file", "file.txt");
    (void)folder.link("broken", "nowhere");
    (void)folder.write("alias.desktop", "[Desktop Entry]\nType=Link\nName=A\nURL=file://" +
                                            folder.at("folder") + "\n");
    FSRef target;
    ASSERT_EQ(FSPathMakeRef(folder.at("file.txt").c_str(), &target), noErr);
    ASSERT_EQ(FSCreateAliasFile(target, folder.at("alias").c_str(), AliasFileForm::Finder), noErr);
    const QImage plainFolder = iconOf(folder.at("folder"))->image();
    EXPECT_EQ(plainFolder.size(), QSize(128, 128));
    EXPECT_TRUE(areAlike(plainFolder, iconForFile(folder.at("folder").c_str())->image()));

    const auto listed = itemAt(folder.path());
    const struct {
        const char *name;
        const char *target;
    } rows[] = {
        {"to folder", "folder"},
        {"to file", "file.txt"},
        {"alias.desktop", "folder"},
        {"alias", "file.txt"},
    };
    for (const auto &row : rows)
        EXPECT_TRUE(areAlike(child(listed, row.name)->iconForFSOUsingCached(kFresh)->image(),
                             badged(iconOf(folder.at(row.target)), "AliasBadge")))
            << row.name;
    EXPECT_EQ(child(listed, "broken")->iconForFSOUsingCached(kFresh)->badge(), IconBadge::None)
        << "of unknown kind";
    EXPECT_FALSE(child(listed, "broken")->iconForFSOUsingCached(kFresh)->image().isNull());
}

TEST(Icons, OfLockedFilesHaveABadgeUnlessTheyAreAliases) {
    const MountedFolder mounted("ext4");
    if (!mounted.failureReason().empty())
        GTEST_SKIP() << mounted.failureReason();
    const TemporaryFolder link;
    (void)link.write("alias.desktop", "[Desktop Entry]\nType=Link\nName=A\nURL=file:///usr\n");
    fs::copy(link.at("alias.desktop"), mounted.at("alias.desktop"));
    fs::copy("/etc/hostname", mounted.at("file"));
    fs::create_directory(mounted.at("folder"));
    const auto file = itself(mounted.at("file"));
    const auto kept = file->iconForFSOUsingCached(kCached);
    for (const char *const name : {"alias.desktop", "file", "folder"})
        ASSERT_EQ(runProcess({"chattr", "+i", mounted.at(name)}).status, 0);

    EXPECT_TRUE(
        areAlike(file->iconForFSOUsingCached(kFresh)->image(), badged(kept, "LockedBadge")));
    EXPECT_TRUE(areAlike(file->fileIconWithLink()->image(), badged(kept, "AliasBadge")));
    EXPECT_EQ(file->iconForFSOUsingCached(kCached), kept) << "whatever has happened to the file";
    EXPECT_EQ(kept->badge(), IconBadge::None);
    EXPECT_NE(file->iconForFSOUsingCached(kFresh), file->iconForFSOUsingCached(kFresh));
    EXPECT_EQ(iconOf(mounted.at("folder"))->badge(), IconBadge::None);
    EXPECT_EQ(iconOf(mounted.at("alias.desktop"))->badge(), IconBadge::Alias);

    for (const char *const name : {"alias.desktop", "file", "folder"})
        ASSERT_EQ(runProcess({"chattr", "-i", mounted.at(name)}).status, 0);
}

TEST(Icons, OfRemoteItemsAreGeneric) {
    struct Row {
        int32_t type;
        ItemIcon::Ptr expected;
    };
    // Local items at the same paths are ignored.
    const Row rows[] = {
        {MFS_TYPE_LINK, MXFileSystemObject::remoteFileIconWithLink()}, // also one to a folder
        {MFS_TYPE_DIRECTORY, MXFileSystemObject::genericFolderIcon()},
        {MFS_TYPE_FILE, MXFileSystemObject::genericFileIcon()},
        {MFS_TYPE_OTHER, MXFileSystemObject::genericFileIcon()},
    };
    for (const Row &row : rows) {
        const Record record(mfs_fso_new(row.type, MFS_LOCATION_REMOTE, 755, strdup(""), "usr",
                                        strdup("ann"), strdup("staff"), 1, 0, strdup("/usr"), "/"),
                            mfs_fso_destroy_tree);
        const auto item = MXFileSystemObject::newFSOWithCStruct(record.get());
        const auto icon = item->iconForFSOUsingCached(kCached);
        EXPECT_EQ(icon->description(), row.expected->description()) << row.type;
        EXPECT_EQ(icon->badge(), row.expected->badge()) << row.type;
        EXPECT_EQ(item->iconForFSOUsingCached(kCached), icon);
        EXPECT_FALSE(item->hasCustomIcon());
    }
    EXPECT_TRUE(areAlike(MXFileSystemObject::remoteFileIconWithLink()->image(),
                         badged(MXFileSystemObject::genericFileIcon(), "AliasBadge")));
    EXPECT_FALSE(MXFileSystemObject::init()->iconForFSOUsingCached(kFresh)->image().isNull());
}

TEST(Icons, AreCustomIfTheFlagSaysSo) {
    const TemporaryFolder folder;
    const auto file = itself(folder.file("file"));
    EXPECT_FALSE(file->hasCustomIcon());
    FinderInfo info;
    info.flags = kHasCustomIcon;
    ASSERT_EQ(writeFinderInfo(folder.at("file").c_str(), info), noErr);
    EXPECT_TRUE(file->hasCustomIcon()) << "asks at each call";
    EXPECT_FALSE(file->iconForFSOUsingCached(kFresh)->image().isNull()) << "there is no icon";
    fs::remove(folder.at("file"));
    EXPECT_FALSE(file->hasCustomIcon());
    EXPECT_FALSE(file->iconForFSOUsingCached(kFresh)->image().isNull());
    EXPECT_FALSE(MXFileSystemObject::init()->hasCustomIcon());
}

/// Waits until the file system's clock moves on, which it does every few milliseconds.
void awaitNextTime(const TemporaryFolder &folder) {
    const auto timeNow = [&folder] { return fs::last_write_time(folder.write("now", "")); };
    const auto start = timeNow();
    while (timeNow() == start)
        std::this_thread::yield();
}

TEST(Icons, OfListedItemsFollowFlagsThatAreSetAfterTheListing) {
    const TemporaryFolder folder;
    for (const char *const name : {"plain", "with attribute", "with sidecar", "replaced"})
        (void)folder.write(name, "");
    (void)folder.folder("folder");
    FinderInfo info;
    info.flags = kHasCustomIcon;
    ASSERT_EQ(writeFinderInfo(folder.file("replacement").c_str(), info), noErr);
    awaitNextTime(folder);
    const auto listed = itemAt(folder.path());
    for (const char *const name : {"with attribute", "folder"})
        ASSERT_EQ(writeFinderInfo(folder.at(name).c_str(), info), noErr);
    (void)folder.write("._with sidecar", samples::netatalkRecord(kHasCustomIcon).toStdString());
    fs::rename(folder.at("replacement"), folder.at("replaced"));
    for (const char *const name : {"with attribute", "with sidecar", "replaced", "folder"})
        EXPECT_EQ(child(listed, name)->iconForFSOUsingCached(kFresh)->description().customIconOf,
                  folder.at(name).c_str());
    EXPECT_EQ(child(listed, "plain")->iconForFSOUsingCached(kFresh)->description().customIconOf,
              "");
}

/// Their inodes have not changed since the listing, but they are others.
TEST(Icons, OfListedItemsFollowFlagsOfOthersThatTakeTheirPlace) {
    const TemporaryFolder folder;
    FinderInfo info;
    info.flags = kHasCustomIcon;
    for (const char *const name : {"listed/file", "other/file"})
        (void)folder.write(name, "");
    ASSERT_EQ(writeFinderInfo(folder.at("other/file").c_str(), info), noErr);
    awaitNextTime(folder);
    const auto listed = itemAt(folder.at("listed"));
    fs::rename(folder.at("listed"), folder.at("moved"));
    fs::rename(folder.at("other"), folder.at("listed"));
    EXPECT_EQ(child(listed, "file")->iconForFSOUsingCached(kFresh)->description().customIconOf,
              folder.at("listed/file").c_str());
}

TEST(Icons, AreSharpInEverySize) {
    const auto icon = MXFileSystemObject::genericFolderIcon();
    for (const qreal scale : {1.0, 1.25, 2.0, 3.0}) {
        const QImage image = icon->image(ItemIcon::kPoints, scale);
        EXPECT_EQ(image.size(), QSize(128, 128) * scale);
        EXPECT_EQ(image.deviceIndependentSize(), QSizeF(128, 128));
    }
    const QImage small = icon->image(ItemIcon::kPoints, 1);
    const QImage large = icon->image(ItemIcon::kPoints, 3);
    EXPECT_FALSE(areAlike(large, small.scaled(large.size()))) << "enlarged";
    EXPECT_TRUE(icon->image(0).isNull());
    EXPECT_TRUE(icon->image(-1).isNull());
    EXPECT_TRUE(icon->image(100'000).isNull());
    EXPECT_TRUE(icon->image(16, 1e9).isNull());
    EXPECT_TRUE(icon->image(16, qQNaN()).isNull());
}

} // namespace
