// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/aliases/Aliases.h"
#include "tests/model/items.h"
#include "tests/model/SpecialItems.h"
#include "tests/support/LoggedMessages.h"
#include "tests/support/MountedFolder.h"
#include "tests/support/Process.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>

#include <sys/mount.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using namespace MWCore;

TEST(Identification, FindsEveryKind) {
    const SpecialItems items;
    for (const SpecialItems::Row &row : SpecialItems::rows()) {
        auto target = static_cast<MXItemKind>(-1);
        bool isPackaged = true;
        EXPECT_EQ(
            MXFileSystemObject::typeForItemAtPath(text(items.at(row.name)), &target, &isPackaged),
            row.kind)
            << row.name;
        EXPECT_EQ(target, row.targetKind) << row.name;
        std::error_code none;
        const bool isThere = fs::exists(items.at(row.name), none);
        EXPECT_EQ(isPackaged, row.isPackaged || !isThere) << row.name;
    }
    EXPECT_EQ(MXFileSystemObject::typeForItemAtPath("/", nullptr, nullptr), MXItemKindVolume);
    EXPECT_EQ(MXFileSystemObject::typeForItemAtPath("/dev/null", nullptr, nullptr),
              MXItemKindUnknown);
    const QString withNull = QString::fromLatin1("/\0tmp", 5);
    for (const QString &path : {QString(), QString(""), withNull, QString("/gone")})
        EXPECT_EQ(MXFileSystemObject::typeForItemAtPath(path, nullptr, nullptr), MXItemKindUnknown);
}

/// Compares the kinds from identify() and from the path for every item below @p folder.
/// Returns the number of items compared.
int compareBelow(const std::string &folder, int depth) {
    const auto item = itemAt(folder);
    int compared = 0;
    for (qsizetype index = 0; item && index < item->totalItems(); ++index) {
        const auto child = item->subitemAtIndex(index);
        const QString path = child->completePath();
        auto target = MXItemKindUnknown;
        bool isPackaged = false;
        const auto kind = MXFileSystemObject::typeForItemAtPath(path, &target, &isPackaged);
        struct stat now = {};
        if (stat(child->cstruct()->complete_path, &now) != 0 &&
            child->cstruct()->target_type != MFS_TARGET_UNKNOWN)
            continue; // gone meanwhile
        EXPECT_EQ(child->fsoKind(), kind) << path.toStdString();
        EXPECT_EQ(child->aliasOrLinkTargetKind(), target) << path.toStdString();
        EXPECT_EQ(child->isApplicationPackaged(), isPackaged) << path.toStdString();
        ++compared;
        if (depth > 0 && child->isDir() && !child->isLink())
            compared += compareBelow(child->cstruct()->complete_path, depth - 1);
    }
    return compared;
}

TEST(Identification, AgreesForAListedChildAndItsPath) {
    const SpecialItems items;
    const TemporaryFolder folder;
    (void)folder.link("devices", "/dev"); // the path of which is not listed
    EXPECT_GE(compareBelow(items.path(), 0), SpecialItems::rows().size());
    EXPECT_GT(compareBelow("/usr", 2), 1000);
    EXPECT_GT(compareBelow("/etc", 9), 100);
    EXPECT_GT(compareBelow(folder.at("devices"), 0), 10);
    EXPECT_GT(compareBelow("/proc/self", 1), 50);
    EXPECT_GT(compareBelow("/", 0), 10);
}

TEST(Identification, PredicatesFollowFromTheKind) {
    const SpecialItems items;
    const auto folder = itemAt(items.path());
    for (const SpecialItems::Row &row : SpecialItems::rows()) {
        const auto item = child(folder, row.name);
        ASSERT_TRUE(item) << row.name;
        struct stat status = {};
        ASSERT_EQ(lstat(items.at(row.name).c_str(), &status), 0);
        EXPECT_EQ(item->isDir(), S_ISDIR(status.st_mode)) << row.name;
        EXPECT_EQ(item->isFolder(), item->isDir());
        EXPECT_EQ(item->isFile(), row.kind == MXItemKindFile) << row.name;
        EXPECT_EQ(item->isLink(), row.kind == MXItemKindLink) << row.name;
        EXPECT_EQ(item->isAlias(), row.kind == MXItemKindAlias) << row.name;
        EXPECT_EQ(item->isPackage(), row.kind == MXItemKindPackage) << row.name;
        EXPECT_EQ(item->isApplication(), row.kind == MXItemKindApplication) << row.name;
        EXPECT_EQ(item->isPackagedApplication(), row.isPackaged) << row.name;
        EXPECT_FALSE(item->isVolume());
        EXPECT_EQ(item->aliasOrLinkTargetIsInvalid(), !item->isLink() && !item->isAlias())
            << row.name;
        EXPECT_FALSE(item->kindAsString().isEmpty()) << row.name;
    }
    EXPECT_EQ(child(folder, "to other host.desktop")->kindAsString(),
              child(folder, "to web.desktop")->kindAsString());
    EXPECT_TRUE(itemAt("/proc")->isVolume() && itemAt("/proc")->isDir());
    const auto followed = itemAt(items.at("link to folder"));
    EXPECT_TRUE(followed->isLink() && followed->isDir()) << "the record is the folder's";
}

TEST(Identification, FindsNodeKindsOfItemsAndListedChildren) {
    const TemporaryFolder folder;
    (void)folder.file("file", 5000);
    (void)folder.folder("folder");
    (void)folder.fifo("fifo");
    ASSERT_EQ(mknod(folder.at("socket").c_str(), S_IFSOCK | 0600, 0), 0);
    (void)folder.link("link", "file");
    (void)folder.link("chain", "link");
    (void)folder.link("broken", "nowhere");
    const std::map<mode_t, MXNodeKind> kinds = {
        {S_IFREG, MXNodeKind::File},
        {S_IFDIR, MXNodeKind::Folder},
        {S_IFIFO, MXNodeKind::Fifo},
        {S_IFSOCK, MXNodeKind::Socket},
        {S_IFLNK, MXNodeKind::Link},
        {S_IFBLK, MXNodeKind::BlockDevice},
        {S_IFCHR, MXNodeKind::CharacterDevice},
    };
    QList<MXFileSystemObject::Ptr> items = itemAt(folder.path())->visibleItems();
    for (const auto &listed : QList(items))
        items += MXFileSystemObject::newFSOForLocalItem(listed->completePath());
    items += MXFileSystemObject::newFSOForLocalItem("/dev/null");
    ASSERT_EQ(items.size(), 2 * 7 + 1);
    for (const auto &item : items) {
        const std::string path = item->pathBytes().toStdString();
        struct stat node = {};
        struct stat target = {};
        ASSERT_EQ(lstat(path.c_str(), &node), 0) << path;
        const bool isLive = stat(path.c_str(), &target) == 0;
        EXPECT_EQ(item->nodeKind(), kinds.at(node.st_mode & S_IFMT)) << path;
        EXPECT_EQ(item->size(), node.st_size) << path;
        EXPECT_EQ(item->mode(), isLive ? target.st_mode & 07777 : 0) << path;
        EXPECT_EQ(item->isSymbolicLink(), S_ISLNK(node.st_mode)) << path;
        EXPECT_EQ(item->isBrokenLink(), !isLive) << path;
        EXPECT_EQ(item->resolvedLinkTarget(),
                  item->isLink() ? text(fs::canonical(path)) : QString())
            << path;
    }
    OSStatus status = noErr;
    EXPECT_FALSE(MXFileSystemObject::newFSOForLocalItem(text(folder.at("gone")), &status));
    EXPECT_EQ(status, fnfErr);
}

TEST(Identification, IsRepeatedOnlyOnRequest) {
    const TemporaryFolder folder;
    (void)folder.link("item", folder.folder("target"));
    const auto item = child(itemAt(folder.path()), "item");
    ASSERT_EQ(item->fsoKind(), MXItemKindLink);
    fs::remove(folder.at("item"));
    (void)folder.file("item");
    EXPECT_EQ(item->fsoKind(), MXItemKindLink);
    item->identify();
    EXPECT_EQ(item->fsoKind(), MXItemKindFile);
    EXPECT_TRUE(item->isFile() && !item->isLink()) << "the kind counts, not the record";
    EXPECT_EQ(item->aliasOrLinkTargetKind(), MXItemKindFolder) << "left as it was";
    item->setApplicationIsPackaged(true);
    fs::remove(folder.at("item"));
    item->identify();
    EXPECT_EQ(item->fsoKind(), MXItemKindUnknown);
    EXPECT_FALSE(item->isApplicationPackaged() || item->isFile());
    (void)folder.folder("item");
    item->identify();
    EXPECT_TRUE(item->isDir());
}

TEST(Identification, MountPointsCanBeBundles) {
    const MountedFolder mounted("tmpfs");
    if (!mounted.failureReason().empty())
        GTEST_SKIP() << mounted.failureReason();
    const struct {
        const char *name;
        MXItemKind kind;
    } rows[] = {
        {"Bundle.app", MXItemKindApplication},
        {"Some.framework", MXItemKindPackage},
        {"disk.1", MXItemKindVolume},
    };
    for (const auto &row : rows) {
        fs::create_directory(mounted.at(row.name));
        ASSERT_EQ(mount("none", mounted.at(row.name).c_str(), "tmpfs", 0, nullptr), 0);
    }
    fs::create_directory(mounted.at("Bundle.app/Contents"));
    std::ofstream(mounted.at("Bundle.app/Contents/Info.plist")) << "";
    const auto listed = itemAt(mounted.path());
    for (const auto &row : rows) {
        EXPECT_EQ(child(listed, row.name)->fsoKind(), row.kind) << row.name;
        EXPECT_TRUE(child(listed, row.name)->isDir());
    }
    EXPECT_EQ(child(listed, "disk.1")->nameWithoutExtension(), "disk.1") << "a volume has none";
}

TEST(Identification, FindsTargetsOfLinksAndAliases) {
    const TemporaryFolder folder;
    const std::string inside = folder.folder("inside");
    const std::string longName(200, 'n');
    std::string longTarget = folder.path();
    while (longTarget.size() < 3900)
        longTarget += "/.././" + folder.path().substr(folder.path().rfind('/') + 1);
    longTarget.resize(4095 - 1, '/');
    (void)folder.file("file");
    (void)folder.file("inside/x");
    const struct {
        const char *name;
        std::string target;
        std::string path;
    } rows[] = {
        {"absolute", folder.at("file"), folder.at("file")},
        {"upwards", "../file", folder.path() + "/file"},
        {"upwards twice", "../inside/../file", folder.path() + "/inside/../file"},
        {"here", "./x", inside + "/x"},
        {"plain", "x", inside + "/x"},
        {"parent", "..", inside + "/.."},
        {"bytes \xFF", "../name \xFF", folder.path() + "/name \xFF"},
        {"long", longTarget, longTarget},
    };
    (void)folder.file("name \xFF");
    for (const auto &row : rows)
        fs::create_symlink(row.target, inside + "/" + row.name);
    const auto listed = itemAt(inside);
    for (const auto &row : rows) {
        const auto link = child(listed, row.name);
        ASSERT_TRUE(link->isLink()) << row.name;
        const QString target = link->aliasOrLinkTargetPath();
        EXPECT_EQ(target, text(row.path)) << row.name;
        const auto bytes = fileSystemRepresentation(target);
        EXPECT_TRUE(fs::equivalent(bytes->toStdString(), inside + "/" + row.name)) << row.name;
    }
    const auto upwards = child(itemAt(inside + "///"), "upwards"); // as shells complete paths
    EXPECT_EQ(upwards->aliasOrLinkTargetPath(), text(folder.path() + "/file"));
    const auto gone = child(listed, "plain");
    fs::remove(inside + "/plain");
    EXPECT_EQ(gone->aliasOrLinkTargetPath(), text(inside + "/"));

    const struct {
        const char *link; ///< present on most systems
        const char *text;
        const char *path;
    } topRows[] = {
        {"/bin", "usr/bin", "/usr/bin"},
        {"/etc/os-release", "../usr/lib/os-release", "//usr/lib/os-release"},
    };
    for (const auto &row : topRows) {
        std::error_code error;
        if (fs::read_symlink(row.link, error) == row.text) {
            EXPECT_EQ(itemAt(row.link)->aliasOrLinkTargetPath(), row.path);
        }
    }
    const auto top = MXFileSystemObject::newFSOForLocalPath("/proc/self", false);
    ASSERT_TRUE(top->isLink());
    EXPECT_EQ(top->aliasOrLinkTargetPath(), "/proc/" + QString::number(getpid()));
    EXPECT_EQ(MXFileSystemObject::resolveAliasFromFileAtPath({}), QString());
    EXPECT_EQ(MXFileSystemObject::resolveAliasPath("/gone"), "/gone");
    const SpecialItems items;
    EXPECT_EQ(child(itemAt(items.path()), "to alias.desktop")->aliasOrLinkTargetPath(),
              text(items.at("file")));
}

TEST(Identification, DoesNotSearchTheDiskForAMissingTarget) {
    const TemporaryFolder folder;
    ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
    FSRef target;
    const QByteArray alias = QByteArray::fromStdString(folder.at("lost.desktop"));
    ASSERT_EQ(FSPathMakeRef(folder.file("target").c_str(), &target), noErr);
    ASSERT_EQ(FSCreateAliasFile(target, alias, AliasFileForm::DesktopEntry), noErr);
    fs::remove(folder.at("target"));
    // Only root learns from the kernel that the item is gone.
    EXPECT_EQ(runAsNobody([&] {
                  const auto lost = itemAt(folder.at("lost.desktop"));
                  return lost->isAlias() && lost->aliasOrLinkTargetKind() == MXItemKindUnknown ? 0
                                                                                               : 1;
              }),
              0);
}

TEST(Identification, RecognisesImagesAndCodeFragments) {
    const TemporaryFolder folder;
    for (const char *const name : {"a.png", "b.PNG", "c.txt", "png", ".png"})
        (void)folder.file(name);
    (void)folder.folder("d.png");
    std::ofstream(folder.at("fragment")) << "Joy!peff";
    std::ofstream(folder.at("short")) << "Joy";
    std::ofstream(folder.at("other")) << " Joy!";
    fs::create_directories(folder.at("B.app/Contents/MacOS"));
    std::ofstream(folder.at("B.app/Contents/Info.plist"))
        << "<plist><dict><key>CFBundleExecutable</key><string>b</string>"
           "<key>CFBundleGetInfoString</key><string>1.2, by nobody</string></dict></plist>";
    std::ofstream(folder.at("B.app/Contents/MacOS/b")) << "Joy!";
    (void)folder.fifo("fifo");
    const auto item = itemAt(folder.path());
    for (int round = 0; round < 2; ++round)
        for (const char *const name : {"a.png", "b.PNG", "c.txt", "png", ".png", "d.png"})
            EXPECT_EQ(child(item, name)->isGraphicFile(), std::string(name) == "a.png") << name;
    for (const char *const name : {"fragment", "short", "other", "fifo", "B.app", "d.png"})
        EXPECT_EQ(child(item, name)->isCarbonApplication(),
                  std::string(name) == "fragment" || std::string(name) == "B.app")
            << name;
    EXPECT_EQ(child(item, "B.app")->versionString(), "1.2, by nobody");
    EXPECT_TRUE(child(item, "d.png")->versionString().isNull());
    fs::remove(folder.at("B.app/Contents/MacOS/b"));
    EXPECT_FALSE(child(item, "B.app")->isCarbonApplication());
}

} // namespace
