// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/mfs_utility.h"
#include "model/values/MXLabelManager.h"
#include "platform/metadata/MetadataStore.h"
#include "tests/model/items.h"
#include "tests/model/SpecialItems.h"
#include "tests/support/LoggedMessages.h"
#include "tests/support/MountedFolder.h"
#include "tests/support/Process.h"
#include "tests/support/times.h"

#include <gtest/gtest.h>

#include <cstring>
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using namespace MWCore;

TEST(Attributes, AgreeWithStat) {
    const TemporaryFolder folder;
    const std::string path = folder.file("a.tar.gz", 10);
    ASSERT_EQ(chmod(path.c_str(), 07741), 0);
    setModificationTime(path, {1'204'652'712, 500'000'000});
    ASSERT_EQ(link(path.c_str(), folder.at("twin").c_str()), 0);
    (void)folder.link("link", path);
    const auto listed = itemAt(folder.path());
    for (const auto &item : {itemAt(path), child(listed, "a.tar.gz")}) {
        EXPECT_EQ(item->completePath(), text(path));
        EXPECT_EQ(item->name(), "a.tar.gz");
        EXPECT_EQ(item->description(), "a.tar.gz");
        EXPECT_EQ(item->previewItemTitle(), "a.tar.gz");
        EXPECT_EQ(item->nameWithoutExtension(), "a.tar");
        EXPECT_EQ(item->extension(), "gz");
        EXPECT_EQ(item->parentPath(), text(folder.path()));
        EXPECT_EQ(item->links(), 2);
        EXPECT_EQ(item->dateAsTimeT(), 1'204'652'712);
        EXPECT_EQ(item->dateModified().value(),
                  QDateTime::fromMSecsSinceEpoch(1'204'652'712'500, Qt::UTC));
        EXPECT_EQ(item->dateModified().value().timeSpec(), Qt::UTC);
        EXPECT_EQ(item->permissionsAsString(), "rwxr----x");
        EXPECT_TRUE(item->permissions()->hasStickyBit() && item->permissions()->hasSuidBit() &&
                    item->permissions()->hasSgidBit());
        EXPECT_EQ(item->owner(), getpwuid(getuid())->pw_name);
        EXPECT_TRUE(item->ownedByCurrentUser());
        EXPECT_EQ(item->getObjectForKey("NAME"), "a.tar.gz");
        EXPECT_EQ(item->getObjectForKey("USER"), item->owner());
        EXPECT_EQ(item->getObjectForKey("GROUP"), item->group());
        EXPECT_EQ(item->getObjectForKey("DATE"), item->date());
        EXPECT_EQ(item->getObjectForKey("PERMISSIONS"), "rwxr----x");
        EXPECT_TRUE(item->getObjectForKey("name").isNull());
        EXPECT_FALSE(item->date().isEmpty());
        EXPECT_TRUE(item->isLocal() && !item->isRemote() && !item->isRoot());
    }
    EXPECT_EQ(child(listed, "link")->permissionsAsString(), "rwxr----x") << "links are followed";
    listed->setOwner("somebody");
    EXPECT_FALSE(listed->ownedByCurrentUser());
    EXPECT_EQ(listed->fileCount(), 3);
    EXPECT_TRUE(itemAt("/")->isRoot());
}

TEST(Attributes, PermissionsAreCached) {
    const TemporaryFolder folder;
    const std::string path = folder.file("item");
    for (const mode_t mode : {01777U, 02777U, 04777U}) {
        ASSERT_EQ(chmod(path.c_str(), mode), 0);
        const auto item = itemAt(path);
        const auto permissions = item->permissions();
        EXPECT_EQ(permissions->intValue(), 777);
        EXPECT_EQ(permissions->hasStickyBit(), mode == 01777);
        EXPECT_EQ(permissions->hasSgidBit(), mode == 02777);
        EXPECT_EQ(permissions->hasSuidBit(), mode == 04777);
        ASSERT_EQ(chmod(path.c_str(), 0600), 0);
        EXPECT_EQ(item->permissions(), permissions);
        item->setPermissions(MXPermission::initWithNumber(644));
        EXPECT_EQ(item->permissionsAsString(), "rw-r--r--");
    }
}

TEST(Attributes, NamesFollowASetPath) {
    const struct {
        const char *path;
        const char *name;
        const char *bare;
        const char *extension;
        const char *parent;
    } rows[] = {
        {"/", "/", "/", "", "/"},
        {"/a", "a", "a", "", "/"},
        {"/a/b.c/", "b.c", "b", "c", "/a"},
        {"/a.b/c", "c", "c", "", "/a.b"},
        {"/a//b", "b", "b", "", "/a"},
        {"//a", "a", "a", "", "/"},
        {"a", "a", "a", "", ""},
        {"", "", "", "", ""},
        {"/x/.profile", ".profile", ".profile", "", "/x"},
        {"/x/.a.b", ".a.b", ".a", "b", "/x"},
        {"/x/end.", "end.", "end", "", "/x"},
        {"/x/a b .txt ", "a b .txt ", "a b ", "txt ", "/x"},
    };
    const auto item = MXFileSystemObject::init();
    EXPECT_TRUE(item->name().isNull() && item->completePath().isNull());
    for (const auto &row : rows) {
        item->setCompletePath(row.path);
        EXPECT_EQ(item->completePath(), row.path);
        EXPECT_EQ(item->name(), row.name) << row.path;
        EXPECT_EQ(item->nameWithoutExtension(), row.bare) << row.path;
        EXPECT_EQ(item->extensionReal(), row.extension) << row.path;
        EXPECT_EQ(item->parentPath(), row.parent) << row.path;
        EXPECT_EQ(item->nameStartsWithADot(), *row.name == '.') << row.path;
    }
    item->setOwner("somebody");
    item->setGroup("some");
    EXPECT_EQ(item->owner() + item->group(), "somebodysome");
    EXPECT_FALSE(item->ownedByCurrentUser());
}

TEST(Attributes, SystemAttributesFollowASetPath) {
    const TemporaryFolder folder;
    const TemporaryFolder elsewhere;
    (void)folder.file("item");
    const std::string other = elsewhere.file("other", 10);
    ASSERT_EQ(chmod(other.c_str(), 01640), 0);
    for (const bool exists : {true, false}) {
        const auto item = child(itemAt(folder.path()), "item");
        item->setCompletePath(text(exists ? other : elsewhere.at("nothing")));
        EXPECT_EQ(item->permissionsAsString(), exists ? "rw-r-----" : "---");
        EXPECT_EQ(item->permissions()->hasStickyBit(), exists);
        EXPECT_EQ(item->sizeObject() ? item->sizeObject()->totalSize() : 0, exists ? 10U : 0U);
        item->setCompletePath(QString());
        EXPECT_EQ(item->completePath(), text(folder.at("item")));
        EXPECT_EQ(item->permissionsAsString(), exists ? "rw-r-----" : "---") << "kept";
        item->setPermissions({});
        EXPECT_EQ(item->permissionsAsString(), "rw-r--r--") << "as the listing saw it";
    }
}

TEST(Attributes, UrlsAreAbsolute) {
    const auto item = MXFileSystemObject::init();
    item->setCompletePath("a b");
    const QString expected =
        QString::fromStdString("file://" + fs::current_path().string() + "/a%20b");
    EXPECT_EQ(item->url(), expected);
    EXPECT_EQ(item->previewItemURL(), QUrl(expected));
}

TEST(Attributes, DamagedMetadataCountAsNone) {
    const TemporaryFolder folder;
    const std::string path = folder.file("item");
    folder.damagedSidecar("item");
    const auto item = itemAt(path);
    EXPECT_EQ(item->label()->id(), 0) << "there, but not to be read";
    EXPECT_EQ(item->type(), 0xFFFFFFFF);
    EXPECT_FALSE(item->isInvisible());
    EXPECT_EQ(item->fsoKind(), MXItemKindFile);
}

TEST(Attributes, PreserveEveryByteOfAName) {
    const TemporaryFolder folder;
    for (const char *const name :
         {"\xFF", "\xC3", "\xED\xB3\xBF", "%2F?#", "\xF0\x9F\x98\x80", "\n"}) {
        const std::string path = folder.file(name);
        const auto item = child(itemAt(folder.path()), name);
        ASSERT_TRUE(item);
        EXPECT_EQ(fileSystemRepresentation(item->name()), QByteArray(name));
        EXPECT_TRUE(itemAt(fileSystemRepresentation(item->completePath())->toStdString()));
        EXPECT_TRUE(item->dateModified().value().isValid());
        const QByteArray url = item->previewItemURL().toEncoded();
        EXPECT_EQ(QByteArray::fromPercentEncoding(url), "file://" + QByteArray(path.c_str()));
        EXPECT_EQ(item->url(), QString::fromLatin1(url));
        EXPECT_EQ(item->cleanURL(), item->url());
        EXPECT_EQ(item->urlWithoutPath(), "file://");
        fs::remove(path);
    }
}

TEST(Attributes, CatalogueAttributesAreNotCached) {
    const MountedFolder mounted("ext4");
    if (!mounted.failureReason().empty())
        GTEST_SKIP() << mounted.failureReason();
    const std::string path = mounted.at("item");
    ASSERT_EQ(close(open(path.c_str(), O_CREAT | O_WRONLY, 0644)), 0);
    const auto item = itemAt(path);
    EXPECT_EQ(item->label()->description(), "None");
    EXPECT_EQ(item->type(), 0U);
    EXPECT_EQ(item->typeAsString(), "");
    EXPECT_FALSE(item->isInvisible() || item->isLocked());
    setModificationTime(path, {1'000'000'000, 0});
    struct statx status = {};
    ASSERT_EQ(statx(AT_FDCWD, path.c_str(), 0, STATX_BTIME, &status), 0);
    EXPECT_EQ(item->dateCreated().toSecsSinceEpoch(), status.stx_btime.tv_sec);

    FinderInfo info;
    info.type = 0x54455854;
    info.creator = 0x74747874;
    info.flags = kIsInvisible;
    info.setLabelNumber(6);
    ASSERT_EQ(writeFinderInfo(path.c_str(), info), noErr);
    ASSERT_EQ(runProcess({"chattr", "+i", path}).status, 0);
    EXPECT_EQ(item->label(), MXLabelManager::sharedLabelManager()->labelWithID(6));
    EXPECT_EQ(item->typeAsString() + item->creatorAsString(), "TEXTttxt");
    EXPECT_TRUE(item->isInvisible() && item->isLocked());
    ASSERT_EQ(runProcess({"chattr", "-i", path}).status, 0);

    const auto package = itemAt(mounted.path());
    ASSERT_TRUE(package->isVolume());
    EXPECT_EQ(package->name(), text(mounted.path().substr(mounted.path().rfind('/') + 1)));
    EXPECT_EQ(item->volumeName(), package->name());
    ASSERT_EQ(fs::create_directory(mounted.at("a.framework")), true);
    ASSERT_EQ(runProcess({"chattr", "+i", mounted.at("a.framework")}).status, 0);
    EXPECT_FALSE(itemAt(mounted.at("a.framework"))->isLocked()) << "never a package";
    ASSERT_EQ(runProcess({"chattr", "-i", mounted.at("a.framework")}).status, 0);
}

TEST(Attributes, VanishedItemsHaveMarkers) {
    const TemporaryFolder folder;
    (void)folder.file("item");
    const auto item = child(itemAt(folder.path()), "item");
    const auto alone = itemAt(folder.at("item"));
    fs::remove(folder.at("item"));
    const LoggedMessages log;
    EXPECT_EQ(alone->permissionsAsString(), "---") << "looked at only now";
    EXPECT_EQ(item->permissionsAsString(), "rw-r--r--") << "as the listing saw it";
    EXPECT_TRUE(item->dateModified().isMarker());
    EXPECT_FALSE(item->dateModified().value().isValid());
    EXPECT_TRUE(item->dateCreated().isNull());
    EXPECT_TRUE(item->dateModifiedAsString().isNull() && item->dateCreatedAsString().isNull());
    EXPECT_EQ(item->type(), 0xFFFFFFFF);
    EXPECT_EQ(item->creator(), 0xFFFFFFFF);
    EXPECT_TRUE(item->versionString().isNull() && item->kindAsString().isNull());
    EXPECT_FALSE(item->isCarbonApplication());
    EXPECT_EQ(item->name(), "item");
    EXPECT_FALSE(item->date().isEmpty());
    EXPECT_EQ(LoggedMessages::take(), QStringList());

    EXPECT_FALSE(item->label());
    EXPECT_FALSE(item->isInvisible());
    EXPECT_EQ(LoggedMessages::take(),
              QStringList({"mwcore: Could not get FSRef", "mwcore: Could not get FSRef"}));
    EXPECT_FALSE(item->fsRef());
    const QStringList twoLines = {"mwcore: \tERROR : MXFileSystemObject : Could not get FSRef for "
                                  "item at path: " +
                                      text(folder.at("item")),
                                  "mwcore: \tERROR : MXFileSystemObject : Error : -43"};
    EXPECT_EQ(LoggedMessages::take(), twoLines);
    EXPECT_FALSE(item->_fsSpec());
    EXPECT_EQ(LoggedMessages::take(), twoLines);
    EXPECT_TRUE(item->volumeName().isNull());
    EXPECT_EQ(LoggedMessages::take(), QStringList("mwcore: getLocalFileSize : Error Getting info"));
    EXPECT_FALSE(item->isLocked());
    EXPECT_EQ(LoggedMessages::take().size(), 1);
}

TEST(Attributes, DoNotBlockOnFifosAndDevices) {
    EXPECT_EQ(runForked([] {
                  alarm(20); // ends the process if it blocks
                  const SpecialItems items;
                  const auto folder = itemAt(items.path());
                  (void)mfs_set_trace_stream(nullptr);
                  int asked = 0;
                  for (const auto &item :
                       {child(folder, "fifo"), child(folder, "socket"), itemAt("/dev/zero"),
                        itemAt("/dev/tty"), itemAt(items.at("fifo"))}) {
                      (void)item->permissions();
                      (void)item->dateModifiedAsString();
                      (void)item->typeAsString();
                      (void)item->label();
                      (void)item->isLocked();
                      (void)item->volumeName();
                      (void)item->versionString();
                      (void)item->fsRef();
                      (void)item->_fsSpec();
                      (void)item->kindAsString();
                      (void)item->isInvisible();
                      (void)item->isGraphicFile();
                      (void)item->isCarbonApplication();
                      (void)item->aliasOrLinkTargetPath();
                      (void)MXFileSystemObject::resolveAliasPath(item->completePath());
                      item->identify();
                      item->setSortsByAttribute(MXSortAttributeSize, MXSortOrderNatural);
                      asked += item->fsoKind() == MXItemKindUnknown;
                  }
                  return asked == 5 ? 0 : 1;
              }),
              0);
}

TEST(Conversions, Codes) {
    const struct {
        uint32_t code;
        const char *text;
    } rows[] = {{0x54455854, "TEXT"}, {0, ""}, {0x41004142, "A"}, {0x4120203F, "A  ?"}};
    for (const auto &row : rows)
        EXPECT_EQ(MXFileSystemObject::osTypeToFourCharCode(row.code), row.text);
    const auto bytes = MXFileSystemObject::osTypeToFourCharCode(0x66AFAF64);
    EXPECT_EQ(fileSystemRepresentation(bytes), QByteArray("f\xAF\xAF"
                                                          "d"));
    for (const char *const code : {"TEXT", "TEXTtext", "ab", ""}) {
        uint32_t word = 0; // in memory order, deliberately not the inverse
        std::memcpy(&word, code, std::min<std::size_t>(4, std::strlen(code)));
        EXPECT_EQ(MXFileSystemObject::fourCharCodeToOSType(code), word) << code;
    }
    EXPECT_EQ(MXFileSystemObject::nsToCString(QString::fromLatin1("a\0b", 3)), "a");
    EXPECT_EQ(MXFileSystemObject::nsToCString(QString(u'\u00E4')), "\xC3\xA4");
    const uint16_t word = 1;
    EXPECT_EQ(MXFileSystemObject::isBigEndian(), *reinterpret_cast<const char *>(&word) == 0);
}

TEST(Conversions, Dates) {
    EXPECT_EQ(MXFileSystemObject::carbonReferenceDate(), -3061152000.0);
    const struct {
        UTCDateTime count;
        const char *date;
    } rows[] = {
        {0, "1904-01-01T00:00:00.000Z"},
        {65536, "1904-01-01T00:00:01.000Z"},
        {65536 + 32768, "1904-01-01T00:00:01.500Z"},
        {2082844800ULL * 65536, "1970-01-01T00:00:00.000Z"},
        {(2082844800ULL + 951782400) * 65536, "2000-02-29T00:00:00.000Z"},
    };
    for (const auto &row : rows) {
        const QDateTime date = MXFileSystemObject::UTCDateTimeToNSDate(row.count);
        EXPECT_EQ(date.toString(Qt::ISODateWithMs), row.date);
        UTCDateTime back = 1;
        MXFileSystemObject::NSDateToUTCDateTime(date, &back);
        EXPECT_EQ(back, row.count);
    }
    for (const int64_t milliseconds :
         {int64_t(-400'000'000'000'000'000), int64_t(-3'000'000'000'000),
          int64_t(400'000'000'000'000'000), INT64_MIN, INT64_MAX}) {
        UTCDateTime count = 1;
        MXFileSystemObject::NSDateToUTCDateTime(
            QDateTime::fromMSecsSinceEpoch(milliseconds, Qt::UTC), &count);
        EXPECT_EQ(count, milliseconds < 0 ? 0 : UINT64_MAX) << milliseconds;
    }
    for (int64_t millisecond = 0; millisecond < 1000; ++millisecond) {
        UTCDateTime count = 1;
        const auto date = QDateTime::fromMSecsSinceEpoch(1'700'000'000'000 + millisecond, Qt::UTC);
        MXFileSystemObject::NSDateToUTCDateTime(date, &count);
        EXPECT_EQ(MXFileSystemObject::UTCDateTimeToNSDate(count), date);
    }
}

/// Ends the process with status 0 if the date text of a file is @p expected.
[[noreturn]] void exitAfterTelling(const char *language, const char *zone, const char *expected) {
    setenv("LC_ALL", language, 1);
    setenv("TZ", zone, 1);
    bool isAsExpected = false;
    {
        const TemporaryFolder folder;
        setModificationTime(folder.file("item"), {1'204'652'712, 0});
        isAsExpected = itemAt(folder.at("item"))->dateModifiedAsString() == expected;
    }
    exit(isAsExpected ? 0 : 1);
}

TEST(Conversions, DateTextsAreInTheUsersLanguage) {
    GTEST_FLAG_SET(death_test_style, "threadsafe"); // Qt reads the language once per process
    const auto done = testing::ExitedWithCode(0);
    EXPECT_EXIT(exitAfterTelling("C", "UTC", "March 04, 2008 05:45PM"), done, "");
    EXPECT_EXIT(exitAfterTelling("en_US.UTF-8", "ABC-7:30", "March 05, 2008 01:15AM"), done, "");
    EXPECT_EXIT(exitAfterTelling("fr_FR.UTF-8", "UTC", "mars 04, 2008 05:45PM"), done, "");
}

} // namespace
