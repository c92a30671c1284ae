// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/values/MXLabelManager.h"
#include "platform/foundation/MXAssertionHandler.h"
#include "platform/foundation/MXException.h"
#include "tests/model/items.h"
#include "tests/support/LoggedMessages.h"
#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/texts.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>

#include <sys/stat.h>

namespace {

using namespace MWCore;
using Ptr = MXFileSystemObject::Ptr;

TEST(Lifetime, ObjectsCanBeReleasedInAnyOrder) {
    const TemporaryFolder place;
    for (const char *const name : {"a", "b", "c"})
        (void)place.file(name);
    (void)place.folder("d");
    std::vector<std::size_t> order = {0, 1, 2, 3, 4};
    do {
        const auto listing = [&place] {
            const Ptr folder = itemAt(place.path());
            folder->invalidateFilteredItems();
            folder->hideItem(folder->subitemAtIndex(0));
            QList<Ptr> all = folder->visibleItems();
            folder->setIsFiltered(true);
            return std::vector<QList<Ptr>>{
                {folder}, {all[0]}, {all[3]}, {all[1]->parent()}, folder->visibleItems()};
        };
        std::vector<QList<Ptr>> held = listing();
        for (const std::size_t index : order) {
            held[index].clear();
            for (const QList<Ptr> &list : held)
                for (const Ptr &left : list) { // the remaining objects still work
                    EXPECT_FALSE(left->name().isEmpty());
                    const Ptr parent = left->parent();
                    EXPECT_EQ((parent ? parent : left)->fileCount(), 3);
                }
        }
    } while (std::next_permutation(order.begin(), order.end()));
}

TEST(Lifetime, TheTreeOfARecordIsFound) {
    const TemporaryFolder place;
    (void)place.file("a");
    Ptr folder = itemAt(place.path());
    Ptr file = folder->subitemAtIndex(0);
    mfs_fso *const folderRecord = folder->cstruct();
    mfs_fso *const fileRecord = file->cstruct();
    EXPECT_EQ(MXFileSystemObject::newFSOWithCStruct(folderRecord), folder);
    folder.reset();
    EXPECT_FALSE(mfs_fso_has_object(folderRecord));
    Ptr again = MXFileSystemObject::newFSOWithCStruct(folderRecord);
    file.reset(); // only the folder's second object now keeps the tree
    EXPECT_FALSE(mfs_fso_has_object(fileRecord));
    EXPECT_EQ(again->totalItems(), 0) << "made by hand it is not assimilated";
    again->performAssimilation();
    EXPECT_EQ(names(again), "a");
    again->performAssimilation();
    EXPECT_EQ(again->totalItems(), 1);
}

TEST(Lifetime, HiddenItemsAreReleasedWithTheFolder) {
    const TemporaryFolder place;
    for (const char *const name : {"a", "b", "c"})
        (void)place.file(name);
    Ptr folder = itemAt(place.path());
    const Ptr first = folder->subitemAtIndex(0);
    const Ptr last = folder->subitemAtIndex(2);
    folder->invalidateFilteredItems();
    folder->hideItem(first);
    folder.reset();
    folder = last->parent();
    folder->performAssimilation();
    folder->invalidateFilteredItems();
    folder->hideItem(last);
    EXPECT_EQ(folder->filteredItemCount(), 1);
}

TEST(Lifetime, ATreeInAFolderOfTheHostStaysAlive) {
    const TemporaryFolder place;
    (void)place.file("a");
    const Tree top(mfs_fso_new(MFS_TYPE_DIRECTORY, MFS_LOCATION_REMOTE, 755, nullptr, "Computer",
                               nullptr, nullptr, 1, 0, nullptr, nullptr));
    Ptr folder = MXFileSystemObject::newFSOForLocalPath(text(place.path()), false);
    ASSERT_EQ(mfs_fso_add_subitem(top.get(), folder->cstruct()), 0);
    const Ptr file = folder->child_fso_at_index(0);
    folder.reset();
    EXPECT_EQ(file->name(), "a");
}

TEST(Lifetime, AHostKeepsOwnershipOfItsRecords) {
    const Tree record(mfs_fso_new(MFS_TYPE_FILE, MFS_LOCATION_LOCAL, 644, nullptr, "/a/b", nullptr,
                                  nullptr, 1, 0, nullptr, nullptr));
    Ptr item = MXFileSystemObject::newFSOWithCStruct(record.get());
    EXPECT_EQ(MXFileSystemObject::newFSOWithCStruct(record.get()), item);
    EXPECT_EQ(item->completePath(), "/a/b");
    EXPECT_EQ(item->fsoKind(), MXItemKindUnknown) << "not identified";
    item.reset();
    EXPECT_FALSE(mfs_fso_has_object(record.get()));
    item = MXFileSystemObject::init();
    item->_setCStruct(record.get());
    EXPECT_EQ(item->name(), "b");
    EXPECT_FALSE(mfs_fso_has_object(record.get())) << "the record does not learn of it";
    Ptr known = MXFileSystemObject::newFSOWithCStruct(record.get());
    item.reset();
    EXPECT_EQ(MXFileSystemObject::newFSOWithCStruct(record.get()), known);
    known.reset();
    record->has_object = 1; // the host cleared only the pointer
    const Ptr other = MXFileSystemObject::newFSOWithCStruct(record.get());
    ASSERT_TRUE(other);
    EXPECT_EQ(other->name(), "b");
}

TEST(Lifetime, CreationFailsWithTheDocumentedStatus) {
    const TemporaryFolder place;
    const LoggedMessages log;
    (void)mfs_set_trace_stream(nullptr);
    const QString withNull = QString::fromLatin1("/\0a", 3);
    EXPECT_FALSE(MXFileSystemObject::newFSOForLocalPath(QString(), true));
    EXPECT_FALSE(MXFileSystemObject::newFSOForLocalPath(withNull, true));
    EXPECT_FALSE(MXFileSystemObject::newFSOForLocalPath("/gone", true));
    const QStringList lines = LoggedMessages::take();
    ASSERT_EQ(lines.size(), 3);
    EXPECT_EQ(lines[0],
              "mwcore: MXFileSystemObject + ( id ) newFSOForLocalPath [ thePath was null ]");
    EXPECT_EQ(lines[1], "mwcore: MXFileSystemObject + ( id ) newFSOForLocalPath could not get file "
                        "system rep [ " +
                            withNull + " ]");
    EXPECT_EQ(lines[2], "mwcore: MXFileSystemObject + ( id ) newFSOForLocalPath:(NSString "
                        "*)thePath Failed to get item information");
    const struct {
        QString path;
        OSStatus error;
    } rows[] = {
        {QString(), bdNamErr},
        {withNull, bdNamErr},
        {"", fnfErr},
        {"/gone", fnfErr},
        {text(place.at(std::string(300, 'n'))), bdNamErr},
        {text(place.file("file") + "/x"), errFSNotAFolder},
        {text(place.link("circle", "circle")), errFSAliasLoop},
    };
    for (const auto &row : rows) {
        OSStatus error = noErr;
        EXPECT_FALSE(MXFileSystemObject::newFSOForLocalPath(row.path, &error));
        EXPECT_EQ(error, row.error) << qPrintable(row.path);
    }
    EXPECT_EQ(LoggedMessages::take(), QStringList()) << "this form is silent";
    (void)mfs_set_trace_stream(stdout);

    EXPECT_THROW((void)MXFileSystemObject::newFSOWithCStruct(nullptr), MXException);
    EXPECT_TRUE(
        LoggedMessages::take().join("").contains("MXFilesystemObject : File Info Was NULL"));
    struct GoesOn : MXAssertionHandler {
        void handleFailureInFunction(const QString &, const QString &, int,
                                     const QString &) override {}
    } handler;
    MXAssertionHandler::setCurrentHandler(&handler);
    EXPECT_FALSE(MXFileSystemObject::newFSOWithCStruct(nullptr));
}

TEST(Lifetime, AFolderReportsWhyItsContentsAreMissing) {
    const TemporaryFolder place;
    ASSERT_EQ(chmod(place.path().c_str(), 0755), 0);
    const std::string closed = place.folder("closed");
    ASSERT_EQ(chmod(closed.c_str(), 0711), 0);
    EXPECT_EQ(itemAt(closed)->contentsError(), noErr) << "nothing is closed to the superuser";
    EXPECT_EQ(itemAt("/dev")->contentsError(), deviceFolderErr);
    EXPECT_EQ(itemAt("/dev/null")->contentsError(), noErr);
    EXPECT_EQ(runAsNobody([&closed] {
                  const Ptr folder = itemAt(closed);
                  return folder && folder->contentsError() == permErr ? 0 : 1;
              }),
              0);
}

TEST(Lifetime, AnObjectWithoutARecordReturnsMarkers) {
    const auto item = MXFileSystemObject::init();
    EXPECT_EQ(item->dateAsTimeT(), -1);
    EXPECT_EQ(item->_fileCount(), 0xFFFFFFFF);
    EXPECT_EQ(item->_subdirectoryCount(), 0xFFFFFFFF);
    EXPECT_EQ(item->fileCount() + item->subFolderCount(), 0);
    EXPECT_FALSE(item->isLocal() || item->isRemote() || item->isDir() || item->isFile());
    EXPECT_TRUE(item->dateModified().isMarker());
    EXPECT_TRUE(item->name().isNull() && item->owner().isNull() && item->url().isEmpty());
    item->identify();
    item->performAssimilation();
    EXPECT_EQ(item->totalItems(), 0);
    EXPECT_EQ(item->_fso_get_int_for_attribute(MFS_KEY_LINKS), 0);
}

class Counted : public MXFileSystemObject {
public:
    Counted() { ++alive; }
    ~Counted() override { --alive; }
    static inline int alive = 0;

protected:
    Ptr alloc() const override { return Ptr(new Counted); }
    std::unique_ptr<MXURLObject> urlObject() const override { return nullptr; }
};

TEST(Lifetime, ChildrenAndParentsAreOfTheHostsClass) {
    const TemporaryFolder place;
    (void)place.file("a");
    {
        const Counted prototype;
        Ptr folder =
            MXFileSystemObject::newFSOForLocalPath(text(place.path()), true, nullptr, &prototype);
        const Ptr file = folder->subitemAtIndex(0);
        EXPECT_EQ(Counted::alive, 3);
        EXPECT_TRUE(file->url().isNull());
        folder.reset();
        EXPECT_EQ(Counted::alive, 2);
        const Ptr parent = file->parent();
        EXPECT_EQ(Counted::alive, 3);
        const Ptr bare =
            MXFileSystemObject::newFSOForLocalPath(text(place.path()), false, nullptr, &prototype);
        const Ptr first = bare->child_fso_at_index(0);
        EXPECT_EQ(Counted::alive, 5);
    }
    EXPECT_EQ(Counted::alive, 0);
}

mfs_fso *remote(int32_t type, const char *name, const char *parent, int32_t size = 0,
                const char *target = nullptr) {
    return mfs_fso_new(type, MFS_LOCATION_REMOTE, 755, fresh("Mar  4 17:45"), name, fresh("ann"),
                       fresh("staff"), 2, size, fresh(target), parent);
}

TEST(Remote, UsesOnlyTheRecord) {
    // A local item at the same path is ignored.
    const TemporaryFolder local;
    std::ofstream(local.at("Info.plist")) << "<plist><dict><key>CFBundleGetInfoString</key>"
                                             "<string>1</string></dict></plist>";
    std::ofstream(local.at("a.png")) << "Joy!";
    const std::string place = local.path();
    const Tree record(remote(MFS_TYPE_DIRECTORY, place.c_str(), nullptr));
    for (mfs_fso *const each : {remote(MFS_TYPE_FILE, "a.png", place.c_str(), 7),
                                remote(MFS_TYPE_FILE, "big", place.c_str(), -1),
                                remote(MFS_TYPE_LINK, "link", place.c_str(), 1, "  there"),
                                remote(MFS_TYPE_DIRECTORY, "sub", place.c_str())})
        ASSERT_EQ(mfs_fso_add_subitem(record.get(), each), 0);
    ASSERT_EQ(mfs_fso_add_subitem(mfs_fso_get_subitem_at_index(record.get(), 0, MFS_SUBDIRECTORIES),
                                  remote(MFS_TYPE_FILE, "inner", "/etc/sub")),
              0);
    const LoggedMessages log;
    const Ptr folder = MXFileSystemObject::newFSOWithCStruct(record.get());
    ASSERT_EQ(folder->totalItems(), 4) << "assimilated at once";
    EXPECT_TRUE(folder->isRemote() && folder->isDir() && folder->isFolder());
    for (const Ptr &item : {folder, child(folder, "a.png"), child(folder, "link")}) {
        EXPECT_EQ(item->fsoKind(), MXItemKindUnknown) << "never identified";
        EXPECT_EQ(item->kindAsString(), "Remote File");
        EXPECT_EQ(item->permissionsAsString(), "rwxr-xr-x");
        EXPECT_EQ(item->owner() + item->group() + item->date(), "annstaffMar  4 17:45");
        EXPECT_EQ(item->links(), 2);
        EXPECT_TRUE(item->dateModified().isMarker() && item->dateCreated().isNull());
        EXPECT_TRUE(item->dateModifiedAsString().isNull());
        EXPECT_EQ(item->type() & item->creator(), 0xFFFFFFFF);
        EXPECT_TRUE(item->typeAsString().isNull() && item->creatorAsString().isNull());
        EXPECT_EQ(item->label(), MXLabelManager::sharedLabelManager()->noneLabel());
        EXPECT_FALSE(item->isLocked() || item->isInvisible() || item->isVolume() ||
                     item->isPackage() || item->isApplication() || item->isAlias() ||
                     item->isPackagedApplication() || item->isCarbonApplication());
        EXPECT_FALSE(item->fsRef() || item->_fsSpec());
        EXPECT_TRUE(item->versionString().isNull());
    }
    EXPECT_EQ(LoggedMessages::take(), QStringList());
    EXPECT_TRUE(child(folder, "a.png")->isGraphicFile() && child(folder, "a.png")->isFile());
    const Ptr link = child(folder, "link");
    EXPECT_TRUE(link->isLink() && !link->isFile());
    EXPECT_EQ(link->aliasOrLinkTargetPath(), text(place + "/there"));
    EXPECT_EQ(LoggedMessages::take(),
              QStringList("mwcore: Alias points to : " + text(place + "/there")));
    EXPECT_TRUE(folder->volumeName().isNull());
    folder->setSortsByAttribute(MXSortAttributeSize, MXSortOrderNatural);
    EXPECT_EQ(names(folder), "sub link a.png big") << "sizes widen with their sign";
    EXPECT_EQ(child(folder, "big")->sizeObject()->record().totalSize, UINT64_MAX);
    const MXFSOSizeRecord size = folder->sizeObject()->record();
    EXPECT_EQ(size.containedFileCount, 3U);
    EXPECT_EQ(size.containedFolderCount, 1U);
    EXPECT_EQ(size.containedItemCount, 4U);
    EXPECT_EQ(size.totalSize + size.physicalTotalSize, 0U);
    EXPECT_EQ(names(child(folder, "sub")), "inner");
    EXPECT_EQ(names(MXFileSystemObject::newFSOWithCStruct(record.get())), names(folder))
        << "an object is not filled again";
}

TEST(Remote, MayBeNestedToAnyDepth) {
    constexpr int kDepth = 200'000;
    const Tree root(remote(MFS_TYPE_DIRECTORY, "r", "/"));
    mfs_fso *folder = root.get();
    for (int depth = 0; depth < kDepth; ++depth) {
        mfs_fso *const next = remote(MFS_TYPE_DIRECTORY, "d", "/");
        ASSERT_EQ(mfs_fso_add_subitem(folder, next), 0);
        folder = next;
    }
    Ptr item = MXFileSystemObject::newFSOWithCStruct(root.get());
    const Ptr deepest = MXFileSystemObject::newFSOWithCStruct(folder);
    EXPECT_EQ(deepest->totalItems(), 0);
    item.reset();
    EXPECT_TRUE(mfs_fso_has_object(folder));
}

} // namespace
