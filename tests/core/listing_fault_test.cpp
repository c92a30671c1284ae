// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/StatConverter.h"
#include "tests/core/wrapped.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/texts.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

#include <unistd.h>

namespace {

int64_t openDescriptors() {
    return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
}

TEST(ListingFault, AReadErrorIsNotTheEndOfTheFolder) {
    const TemporaryFolder folder;
    folder.file("a");
    folder.file("b");
    const auto before = openDescriptors();
    WrappedLibc wrapped;
    wrapped.entriesLeft = 2;
    EXPECT_EQ(listed(folder.path()), nullptr);
    EXPECT_EQ(errno, EIO);
    EXPECT_EQ(openDescriptors(), before);
}

TEST(ListingFault, AVanishedEntryRestartsTheListing) {
    const TemporaryFolder folder;
    folder.file("stays");
    folder.file("vanishes");
    int failures = 0;
    WrappedLibc wrapped;
    wrapped.statError = [&](const std::string &name) {
        if (name != "vanishes" || failures == 0)
            return 0;
        --failures;
        return failures % 2 == 0 ? ENOENT : ESTALE;
    };
    failures = 2; // the stat that keeps links and the one that follows them
    std::vector<const mfs_fso *> visited;
    const auto visit = [](void *context, const mfs_fso *child, const struct stat * /*item*/,
                          int32_t index) {
        auto &children = *static_cast<std::vector<const mfs_fso *> *>(context);
        children.resize(static_cast<std::size_t>(index)); // drops those of the first attempt
        children.push_back(child);
        errno = EXDEV; // must not reach the caller of the listing
    };
    errno = 0;
    const Tree second(mfs_fso_get_local_fso_visiting(folder.path().c_str(), visit, &visited));
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(errno, 0);
    EXPECT_EQ(mfs_fso_file_count(second.get()), 2) << "nothing is left from the first attempt";
    ASSERT_EQ(visited.size(), 2U);
    for (int32_t index = 0; index < 2; ++index)
        EXPECT_EQ(visited[std::size_t(index)],
                  mfs_fso_get_subitem_at_index(second.get(), index, MFS_FILES));

    failures = 2 * 8;
    EXPECT_NE(listed(folder.path()), nullptr) << "the ninth attempt is the last";
    failures = 2 * 9;
    EXPECT_EQ(listed(folder.path()), nullptr);
    EXPECT_EQ(errno, EAGAIN) << "the folder itself exists";
    EXPECT_EQ(failures, 0);
}

TEST(ListingFault, AnyOtherErrorEndsTheListingAtOnce) {
    const TemporaryFolder folder;
    folder.file("entry");
    for (const int error : {EACCES, EIO, ENOTCONN}) {
        WrappedLibc wrapped;
        wrapped.statError = [error](const std::string &name) {
            return name == "entry" ? error : 0;
        };
        EXPECT_EQ(listed(folder.path()), nullptr);
        EXPECT_EQ(errno, error);
        EXPECT_EQ(wrapped.stats, 3) << "the folder, the entry, the entry followed";
    }
}

/// Lists a folder with items of every kind while the n-th allocation fails, for each n until no
/// listing fails.
void failEachAllocation(OutOfMemory outOfMemory) {
    const TemporaryFolder folder;
    folder.file("file.txt");
    folder.folder("sub");
    folder.link("link", "file.txt");
    folder.link("far", "../..");
    const auto before = openDescriptors();
    int failures = 0;
    for (long allocations = 0, successesInARow = 0; successesInARow < 3; ++allocations) {
        ASSERT_LT(allocations, 1000);
        Tree tree;
        {
            WrappedLibc wrapped;
            wrapped.allocationsLeft = allocations;
            wrapped.outOfMemory = outOfMemory;
            errno = 0;
            tree = listed(folder.path());
        }
        if (tree) {
            EXPECT_EQ(errno, 0);
            EXPECT_EQ(mfs_fso_file_count(tree.get()), 3);
            EXPECT_STRNE(tree->owner, "Unknown");
            ++successesInARow;
        } else {
            ASSERT_EQ(errno, ENOMEM) << allocations;
            successesInARow = 0;
            ++failures;
        }
        ASSERT_EQ(openDescriptors(), before);
    }
    EXPECT_GT(failures, 30);
}

TEST(ListingFault, PermanentLackOfMemoryLeaksNothing) {
    failEachAllocation(OutOfMemory::Permanently);
}

TEST(ListingFault, ASingleFailedAllocationLeaksNothing) {
    failEachAllocation(OutOfMemory::Once);
}

TEST(ListingFault, ARecordIsMadeCompletelyOrNotAtAll) {
    char *const owner = fresh("owner");
    char *const alias = fresh(" alias");
    for (long allocations = 0;; ++allocations) {
        ASSERT_LT(allocations, 100);
        mfs_fso *item = nullptr;
        {
            WrappedLibc wrapped;
            wrapped.allocationsLeft = allocations;
            item = mfs_fso_new(MFS_TYPE_DIRECTORY, MFS_LOCATION_LOCAL, 755, nullptr, "/a/b.c",
                               owner, nullptr, 1, 0, alias, "/a");
        }
        if (item) {
            EXPECT_GE(allocations, 8);
            EXPECT_STREQ(item->alias_location, "alias");
            mfs_fso_destroy_tree(item);
            break;
        }
        ASSERT_STREQ(alias, " alias") << "still the caller's";
    }
}

TEST(ListingFault, CostsOneStatPerEntryAndOneLookupPerAccount) {
    const TemporaryFolder folder;
    for (int number = 0; number < 50; ++number)
        folder.file("file" + std::to_string(number));
    folder.link("link", "file1");
    folder.link("dangling", "nowhere");
    WrappedLibc wrapped;
    EXPECT_NE(listed(folder.path()), nullptr);
    EXPECT_EQ(wrapped.stats, 1 + 52 + 2) << "the folder, each entry, each link followed";
    EXPECT_EQ(wrapped.userLookups, 1);
    EXPECT_EQ(wrapped.groupLookups, 1);
}

TEST(ListingFault, AFailedNameLookupDoesNotGiveUnknown) {
    const TemporaryFolder folder;
    folder.file("file");
    struct Row {
        int error;
        bool isListed;
    };
    constexpr Row rows[] = {{ENOMEM, false}, {EMFILE, false}, {ENOENT, true}};
    for (const Row &row : rows) {
        WrappedLibc wrapped;
        wrapped.lookupErrors = {ERANGE, ERANGE, EINTR, row.error};
        const Tree tree = listed(folder.path());
        EXPECT_EQ(tree != nullptr, row.isListed);
        if (tree)
            EXPECT_STREQ(tree->owner, "Unknown");
        else
            EXPECT_EQ(errno, row.error);
        EXPECT_EQ(wrapped.userLookups, 4) << "retried with a larger buffer and after a signal";
    }
}

TEST(ListingFault, SeenTableFindsExactlyItsKeys) {
    MWCore::LookupCache<int64_t> table;
    for (int64_t key = -5000; key < 5000; ++key)
        table.remember(key * 3, key);
    for (int64_t key = -5000; key < 5000; ++key) {
        ASSERT_NE(table.find(key * 3), nullptr);
        ASSERT_EQ(*table.find(key * 3), key);
        ASSERT_EQ(table.find(key * 3 + 1), nullptr);
    }
}

TEST(ListingFault, AMissingStatIsTraced) {
    CapturedTrace trace;
    MWCore::StatConverter converter;
    EXPECT_EQ(MWCore::_stat_to_fso(nullptr, nullptr, "/some/path", converter), nullptr);
    EXPECT_EQ(trace.take(), "stats were null for path : /some/path\n");
}

TEST(ListingFault, UnknownIdsAreNamedUnknown) {
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can give files away";
    const TemporaryFolder folder;
    constexpr id_t kUnassigned = 4'000'000'001;
    const std::string path = folder.file("file");
    ASSERT_EQ(chown(path.c_str(), kUnassigned, kUnassigned), 0);
    const Tree item = listed(path);
    EXPECT_STREQ(item->owner, "Unknown");
    EXPECT_STREQ(item->group, "Unknown");
}

} // namespace
