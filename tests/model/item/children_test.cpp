// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/mfs_utility.h"
#include "model/text/Regex.h"
#include "platform/metadata/MetadataStore.h"
#include "tests/model/items.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/texts.h"
#include "tests/support/times.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <random>

#include <sys/stat.h>

namespace {

using namespace MWCore;

struct TenItems : TemporaryFolder {
    TenItems() {
        for (const char *const name : {"b", "A", "c", "\xC3\x84", "\xFF", "B", "bin"})
            (void)file(name);
        for (const char *const name : {"z", "usr", ".x"})
            (void)folder(name);
    }
};

TEST(Children, AreFilesThenFolders) {
    const TenItems items;
    const auto folder = itemAt(items.path());
    ASSERT_EQ(folder->count(), 10);
    EXPECT_EQ(folder->_fileCount(), 7U);
    EXPECT_EQ(folder->_subdirectoryCount(), 3U);
    for (int32_t index = 0; index < 10; ++index) {
        const auto item = folder->objectAtIndex(index);
        EXPECT_EQ(item->isDir(), index >= 7);
        EXPECT_EQ(folder->child_fso_at_index(index), item) << "a record never has two objects";
        EXPECT_EQ(item->parent(), folder);
    }
    (void)mfs_set_trace_stream(nullptr);
    for (const int32_t index : {-1, 10, INT32_MIN, INT32_MAX}) {
        EXPECT_FALSE(folder->subitemAtIndex(index));
        EXPECT_FALSE(folder->child_fso_at_index(index));
    }
    (void)mfs_set_trace_stream(stdout);
    const auto none = MXFileSystemObject::newFSOForLocalPath(text(items.path()), false);
    EXPECT_EQ(none->totalItems(), 0);
    EXPECT_EQ(none->fileCount(), 7);
    EXPECT_FALSE(none->parent());
    none->performAssimilation();
    EXPECT_EQ(none->totalItems(), 10);
}

TEST(Filtering, RemovesItemsFromTheFilteredList) {
    const TenItems items;
    const auto folder = itemAt(items.path());
    folder->setIsFiltered(true);
    EXPECT_EQ(folder->totalItems(), 0) << "nothing was put into the list yet";
    EXPECT_EQ(folder->filteredItemCount(), 10);
    child(folder, "b"); // does not exist yet
    folder->setIsFiltered(false);
    const auto early = child(folder, "b");
    early->setIsHidden(true);

    folder->invalidateFilteredItems();
    EXPECT_FALSE(folder->isFiltered());
    for (const auto &item : folder->visibleItems()) {
        if (Regex::isHidden(item->name()))
            item->setIsHidden(false); // the argument is ignored
        EXPECT_FALSE(item->isHidden());
    }
    EXPECT_EQ(folder->totalItems(), 10);
    EXPECT_EQ(folder->filteredItemCount(), 3);
    folder->setIsFiltered(true);
    EXPECT_EQ(folder->totalItems(), 7) << "what was hidden before does not count";
    for (const char *const name : {"bin", "usr", ".x"})
        EXPECT_FALSE(child(folder, name)) << name;
    folder->hideItem(early);
    folder->hideItem(early);
    folder->hideItem({});
    folder->hideItem(folder);
    folder->hideItem(itemAt(items.at("A")));
    EXPECT_EQ(folder->filteredItemCount(), 4);
    EXPECT_FALSE(child(folder, "b"));
    folder->invalidateFilteredItems();
    EXPECT_EQ(folder->totalItems(), 10);
    EXPECT_EQ(folder->filteredItemCount(), 0);
    MXFileSystemObject::init()->setIsHidden(true); // no effect without a parent
    folder->setIsFiltered(true);
    folder->performAssimilation();
    EXPECT_EQ(folder->totalItems(), 0) << "until the list is made again";
}

TEST(Filtering, IsSeparateForEachObjectOfAFolder) {
    const TenItems items;
    auto folder = itemAt(items.path());
    const auto hidden = child(folder, "b");
    folder->invalidateFilteredItems();
    folder->hideItem(hidden);
    folder.reset();
    folder = hidden->parent(); // another object with the same hidden child
    folder->performAssimilation();
    folder->invalidateFilteredItems();
    child(folder, "A")->setIsHidden(true);
    EXPECT_EQ(folder->filteredItemCount(), 1);
    folder->setIsFiltered(true);
    EXPECT_EQ(child(folder, "b"), hidden);
}

TEST(Sorting, NamesAreSortedFromZToA) {
    const TenItems items;
    const auto folder = itemAt(items.path());
    EXPECT_FALSE(folder->isSorted());
    EXPECT_EQ(folder->sortAttribute(), -1);
    EXPECT_EQ(folder->sortOrder(), -1);
    const std::string before = names(folder);
    folder->setSortsByAttribute(static_cast<MXSortAttribute>(7), MXSortOrderReversed);
    EXPECT_TRUE(folder->isSorted());
    EXPECT_EQ(folder->sortAttribute(), 7);
    EXPECT_EQ(folder->sortOrder(), 1);
    EXPECT_EQ(names(folder), before);

    folder->invalidateFilteredItems();
    for (const char *const name : {"A", "b", "bin"})
        child(folder, name)->setIsHidden(true);
    folder->setIsFiltered(true);
    folder->setSortsByAttribute(MXSortAttributeName, MXSortOrderNatural);
    EXPECT_EQ(names(folder), text("\xFF \xC3\x84 z usr c B .x").toStdString());
    folder->setSortsByAttribute(MXSortAttributeName, MXSortOrderReversed);
    EXPECT_EQ(names(folder), text(".x B c usr z \xC3\x84 \xFF").toStdString());
    folder->setIsFiltered(false);
    EXPECT_EQ(names(folder), before) << "the other list keeps its order";
}

TEST(Sorting, IsStableAndAgreesWithTheComparisons) {
    const TemporaryFolder folder;
    std::mt19937 random(1);
    for (int number = 0; number < 300; ++number) {
        const std::string name = (random() % 2 ? "" : "with much in common ") +
                                 std::string(random() % 2 ? "item" : "ITEM") +
                                 std::to_string(number % 60) + std::string(random() % 12, 'x') +
                                 (number % 7 ? "" : "\xC3\xA4");
        const std::string path = number % 5 ? folder.file(name, random() % 4) : folder.at(name);
        if (number % 5 == 0) {
            mkdir(path.c_str(), 0755);
            std::ofstream(path + "/file") << std::string(10'000, 'x');
        }
        chmod(path.c_str(), 0600 + random() % 8);
        setModificationTime(path, {std::time_t(random() % 6), 0});
    }
    ASSERT_EQ(writeResourceFork(QByteArray::fromStdString(folder.file("forked", 1)),
                                QByteArray(100, 'f')),
              noErr);
    using Comparison = int (MXFileSystemObject::*)(const MXFileSystemObject &) const;
    const struct {
        MXSortAttribute attribute;
        Comparison comparison;
    } rows[] = {
        {MXSortAttributeAccess, &MXFileSystemObject::_sortByPermissions},
        {MXSortAttributeDate, &MXFileSystemObject::_sortByDate},
        {MXSortAttributeName, &MXFileSystemObject::_sortByName},
        {MXSortAttributeSize, &MXFileSystemObject::_sortBySize},
    };
    for (const auto &row : rows) {
        const auto item = itemAt(folder.path());
        QList<MXFileSystemObject::Ptr> expected = item->visibleItems();
        std::stable_sort(expected.begin(), expected.end(),
                         [&row](const auto &one, const auto &two) {
                             return ((*one).*row.comparison)(*two) < 0;
                         });
        for (const MXSortOrder order : {MXSortOrderNatural, static_cast<MXSortOrder>(5)}) {
            item->setSortsByAttribute(row.attribute, order);
            EXPECT_EQ(item->visibleItems(), expected) << row.attribute;
        }
        item->setSortsByAttribute(row.attribute, MXSortOrderReversed);
        EXPECT_EQ(item->visibleItems(), MXFileSystemObject::_swapArray(expected));
        if (row.attribute == MXSortAttributeSize) {
            EXPECT_EQ(item->subitemAtIndex(1)->name(), "forked")
                << "both forks count; only the sidecar is larger, and no folder";
        }
    }
}

TEST(Sorting, NamesIgnoreCaseBeyondASCII) {
    const struct {
        const char *one;
        const char *other;
        int result; ///< of one->_sortByName(other), in descending order
    } rows[] = {
        {"a", "B", 1},
        {"B", "a", -1},
        {"abc", "ABC", 0},
        {"a", "ab", 1},
        {"\xC3\x84", "\xC3\xA4", 0},
        {"\xD0\x96", "\xD0\xB6", 0},
        {"\xF0\x90\x90\x80", "\xF0\x90\x90\xA8", 0}, // Deseret
        {"\xEF\xBF\xBD", "\xF0\x9F\x98\x80", 1},     // by code point, not by UTF-16 unit
        {"z", "\xC3\x84", 1},
        {"\xFE", "\xFF", 1},
        {"_", "A", 1}, // letters are compared in lower case
    };
    const auto one = MXFileSystemObject::init();
    const auto other = MXFileSystemObject::init();
    for (const auto &row : rows) {
        one->setCompletePath("/" + text(row.one));
        other->setCompletePath("/" + text(row.other));
        EXPECT_EQ(one->_sortByName(*other), row.result) << row.one << " " << row.other;
        EXPECT_EQ(other->_sortByName(*one), -row.result) << row.one << " " << row.other;
    }
}

} // namespace
