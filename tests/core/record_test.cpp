// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/support/texts.h"

#include <gtest/gtest.h>

namespace {

Tree record(int32_t type, const char *name, const char *parent, const char *alias = nullptr) {
    return Tree(mfs_fso_new(type, MFS_LOCATION_LOCAL, 644, fresh("a date"), name, fresh("someone"),
                            fresh("staff"), 3, 1536, fresh(alias), parent));
}

/// A folder with the given number of files and subfolders, named f0, f1 ... and d0, d1 ...
Tree folderOf(int files, int folders) {
    Tree folder = record(MFS_TYPE_DIRECTORY, "top", "/");
    const auto add = [&folder](int32_t type, const std::string &name) {
        EXPECT_EQ(mfs_fso_add_subitem(folder.get(), record(type, name.c_str(), "/top").release()),
                  0);
    };
    for (int index = 0; index < files; ++index)
        add(MFS_TYPE_FILE, "f" + std::to_string(index));
    for (int index = 0; index < folders; ++index)
        add(MFS_TYPE_DIRECTORY, "d" + std::to_string(index));
    return folder;
}

std::string textOf(int64_t value) {
    const auto *const text = reinterpret_cast<const char *>(static_cast<intptr_t>(value));
    return text ? text : "(null)";
}

std::string dumpOf(const mfs_fso *item) {
    testing::internal::CaptureStdout();
    mfs_fso_dump(item);
    return testing::internal::GetCapturedStdout();
}

TEST(Record, NameAndPathComeFromNameAndParent) {
    struct Row {
        const char *name;
        const char *parent;
        const char *expectedName;
        std::optional<std::string> path;
    };
    const Row rows[] = {
        {"n", "/p", "n", "/p/n"}, {"n", "/", "n", "/n"},       {"n", "", "n", "n"},
        {"n", nullptr, "n", {}},  {"/a/b", "/p", "b", "/a/b"}, {"/b", nullptr, "b", "/b"},
        {"", "/p", "", "/p"},     {"/", nullptr, "", "/"},     {"n", "/p/", "n", "/p//n"},
        {"/a/", "/p", "", "/a"},
    };
    for (const Row &row : rows) {
        SCOPED_TRACE(row.name);
        const Tree item = record(MFS_TYPE_FILE, row.name, row.parent);
        EXPECT_STREQ(item->name, row.expectedName);
        EXPECT_EQ(item->complete_path ? std::optional<std::string>(item->complete_path)
                                      : std::nullopt,
                  row.path);
    }
}

TEST(Record, AliasIsTrimmedAndMadeAbsoluteInTheGivenParent) {
    struct Row {
        const char *alias;
        const char *name;
        const char *parent;
        const char *location; ///< null for none
        const char *complete;
    };
    constexpr Row rows[] = {
        {nullptr, "n", "/p", nullptr, nullptr}, {"", "n", "/p", nullptr, nullptr},
        {"/t", "n", "/p", "/t", "/t"},          {"  /t", "n", "/p", "/t", "/t"},
        {"t", "n", "/p", "t", "/p/t"},          {" t", "n", "/", "t", "/t"},
        {"t", "/a/b", "/p", "t", "/p/t"},       {"t", "n", nullptr, "t", "t"},
        {"  ", "n", "/p", "", "/p/"},
    };
    for (const Row &row : rows) {
        const Tree item = record(MFS_TYPE_LINK, row.name, row.parent, row.alias);
        EXPECT_STREQ(item->alias_location, row.location);
        EXPECT_STREQ(item->complete_alias_path, row.complete);
    }
}

TEST(Record, OwnsItsTextsAndDestroyFreesOnlyTheRecord) {
    char *const texts[] = {fresh("date"), fresh("owner"), fresh("group"), fresh("/target")};
    mfs_fso *const item = mfs_fso_new(MFS_TYPE_LINK, MFS_LOCATION_REMOTE, 777, texts[0], "/x/y.z",
                                      texts[1], texts[2], 1, -1, texts[3], nullptr);
    EXPECT_EQ(item->date_modified, texts[0]);
    EXPECT_EQ(item->owner, texts[1]);
    EXPECT_EQ(item->group, texts[2]);
    EXPECT_EQ(item->alias_location, texts[3]);
    EXPECT_EQ(mfs_fso_full_size(item), -1);
    char *const own[] = {item->name, item->extension, item->complete_path,
                         item->complete_alias_path};
    mfs_fso_destroy(item);
    EXPECT_STREQ(texts[3], "/target");
    EXPECT_STREQ(own[2], "/x/y.z");
    for (char *const text : texts)
        std::free(text);
    for (char *const text : own)
        std::free(text);
}

TEST(Record, KeysReadEveryField) {
    const Tree parent = record(MFS_TYPE_DIRECTORY, "/folder", nullptr);
    mfs_fso *const item = record(MFS_TYPE_LINK, "n.txt", "/folder", "t").release();
    ASSERT_EQ(mfs_fso_add_subitem(parent.get(), item), 0);
    item->size = -7;
    item->target_type = MFS_TARGET_UNKNOWN;
    const auto key = [item](int32_t number) { return mfs_fso_get_item_for_key(item, number); };
    EXPECT_EQ(key(1), 644);
    EXPECT_EQ(textOf(key(2)), "a date");
    EXPECT_EQ(textOf(key(4)), "n.txt");
    EXPECT_EQ(textOf(key(5)), "someone");
    EXPECT_EQ(textOf(key(6)), "staff");
    EXPECT_EQ(key(7), 3);
    EXPECT_EQ(takeText(reinterpret_cast<char *>(static_cast<intptr_t>(key(8)))), "-7 ");
    EXPECT_EQ(key(9), -7) << "sign-extended";
    EXPECT_EQ(textOf(key(11)), "/folder/t");
    EXPECT_EQ(textOf(key(12)), "t");
    EXPECT_EQ(textOf(key(15)), "/folder/n.txt");
    EXPECT_EQ(takeText(reinterpret_cast<char *>(static_cast<intptr_t>(key(16)))), "/folder");
    EXPECT_EQ(key(17), 4);
    EXPECT_EQ(reinterpret_cast<mfs_fso *>(static_cast<intptr_t>(key(18))), parent.get());
    EXPECT_EQ(textOf(key(19)), "txt");
    for (const int32_t none : {0, 3, 10, 13, 14, 20, -1, INT32_MAX})
        EXPECT_EQ(key(none), 0) << none;
    item->permissions = 0xFFFF;
    EXPECT_EQ(key(1), 0xFFFF) << "zero-extended";
}

TEST(Record, OnlyDirectoriesTakeChildren) {
    CapturedTrace trace;
    const Tree file = record(MFS_TYPE_FILE, "n", "/");
    const Tree child = record(MFS_TYPE_FILE, "m", "/");
    EXPECT_EQ(file->files, nullptr);
    EXPECT_EQ(mfs_fso_add_subitem(file.get(), child.get()), -1234);
    EXPECT_EQ(trace.take(), "Dumb ass programmer detected\n");
    EXPECT_EQ(mfs_fso_parent(child.get()), nullptr);
    EXPECT_EQ(reinterpret_cast<intptr_t>(mfs_fso_next_item(file.get())), -1234);
    EXPECT_EQ(trace.take(), "Entering mfs_fso_next_item\nDumb ass programmer detected\n");
}

TEST(Record, SubitemIndexMayEqualTheCount) {
    CapturedTrace trace;
    const Tree folder = folderOf(2, 1);
    EXPECT_STREQ(mfs_fso_get_subitem_at_index(folder.get(), 1, 0)->name, "f1");
    EXPECT_STREQ(mfs_fso_get_subitem_at_index(folder.get(), 1, 2)->name, "f1");
    EXPECT_STREQ(mfs_fso_get_subitem_at_index(folder.get(), 0, 1)->name, "d0");
    EXPECT_EQ(mfs_fso_get_subitem_at_index(folder.get(), 2, 0), nullptr);
    EXPECT_EQ(trace.take(), "");
    for (const int32_t outside : {3, -1}) {
        EXPECT_EQ(mfs_fso_get_subitem_at_index(folder.get(), outside, 0), nullptr);
        EXPECT_EQ(trace.take(), "Index out of range\n");
    }
}

TEST(Record, IterationVisitsFilesThenFoldersAfterEachReset) {
    CapturedTrace trace;
    const Tree folder = folderOf(1, 1);
    for (int round = 0; round < 2; ++round) {
        mfs_fso_reset(folder.get());
        EXPECT_STREQ(mfs_fso_next_item(folder.get())->name, "f0");
        EXPECT_EQ(trace.take(), "Entering mfs_fso_next_item\nTotal Items : 2\nGetting a file\n"
                                "Current Index is 1\nActual Array index is 0\n"
                                "Leaving mfs_fso_next_item\n");
        EXPECT_STREQ(mfs_fso_next_item(folder.get())->name, "d0");
        EXPECT_EQ(trace.take(), "Entering mfs_fso_next_item\nTotal Items : 2\nGetting a dir\n"
                                "Correcting Index\nCurrent Index is 2\nActual Array index is 0\n"
                                "Leaving mfs_fso_next_item\n");
        EXPECT_EQ(mfs_fso_next_item(folder.get()), nullptr);
        EXPECT_EQ(trace.take(),
                  "Entering mfs_fso_next_item\nTotal Items : 2\nLeaving mfs_fso_next_item\n");
    }
    const Tree empty = folderOf(0, 0);
    EXPECT_EQ(mfs_fso_next_item(empty.get()), nullptr);
    EXPECT_EQ(trace.take(), "Entering mfs_fso_next_item\nTotal Items : 0\n"
                            "There are no items in this directory\n");
}

TEST(Record, IterationWithoutResetReturnsNullBetweenTheArrays) {
    CapturedTrace trace;
    const Tree folder = folderOf(2, 2);
    std::string names;
    for (int step = 0; step < 6; ++step) {
        const mfs_fso *const item = mfs_fso_next_item(folder.get());
        names += item ? std::string(item->name) + " " : "- ";
    }
    EXPECT_EQ(names, "f0 f1 - d0 d1 - ");
    EXPECT_EQ(trace.take().find("out of range"), std::string::npos);
}

TEST(Record, DestroysTreesOfAnyDepthAndSingleBranches) {
    Tree top = record(MFS_TYPE_DIRECTORY, "/top", nullptr);
    mfs_fso *deepest = top.get();
    for (int depth = 0; depth < 100'000; ++depth) {
        mfs_fso *const child = record(MFS_TYPE_DIRECTORY, "d", "/").release();
        ASSERT_EQ(mfs_fso_add_subitem(deepest, child), 0);
        deepest = child;
    }
    const Tree mixed = folderOf(3, 2);
    mfs_fso_destroy_tree(mfs_fso_get_subitem_at_index(mixed.get(), 1, 0));
    mfs_fso_destroy_tree(mfs_fso_get_subitem_at_index(mixed.get(), 0, 1));
    EXPECT_EQ(mfs_fso_file_count(mixed.get()), 2);
    EXPECT_STREQ(mfs_fso_get_subitem_at_index(mixed.get(), 1, 0)->name, "f2");
    EXPECT_EQ(mfs_fso_subdirectory_count(mixed.get()), 1);
    mfs_fso_destroy_tree(nullptr);
}

TEST(Record, DumpsToStandardOutput) {
    constexpr const char *kFileDump = "\t\tName : >f0<\n\t\tSize : 1536\n\t\tLinks : 3\n"
                                      "\t\tAccess Perms : (null)\n\t\tDate Modified : a date\n"
                                      "\t\tOwner Name : >someone<\n\t\tGroup Name : >staff<\n"
                                      "\t\tComplete Path : >/top/f0<\n";
    EXPECT_EQ(dumpOf(nullptr), "File System Object was null\n");
    EXPECT_EQ(dumpOf(record(MFS_TYPE_FILE, "f0", "/top").get()),
              std::string("Item is a File\n") + kFileDump);
    EXPECT_EQ(dumpOf(record(MFS_TYPE_LINK, "f0", "/top", "t").get()),
              std::string("Item is a File\n") + kFileDump +
                  "\t\tAlias Location : >t<\n\t\tComplete Alias Path : >/top/t<\n");
    EXPECT_EQ(dumpOf(folderOf(1, 1).get()),
              std::string("Item is a directory\nIt has 1 subdirectories and 1 files in it\n"
                          "Subdirectories\n"
                          "\t\tName : >d0<\n\t\tAccess Perms : (null)\n"
                          "\t\tDate Modified : a date\n\t\tOwner Name : >someone<\n"
                          "\t\tGroup Name : >staff<\n\t\tLinks : 3\n\t\tOwner Name : >someone<\n"
                          "\t\tComplete Path : >/top/d0<\n\t\tURL : >(null)<\nFiles\n") +
                  kFileDump);
    const Tree withNull = folderOf(1, 0);
    ASSERT_EQ(mfs_array_append(withNull->subdirectories, nullptr), 1);
    EXPECT_TRUE(dumpOf(withNull.get()).ends_with("Subdirectories\nSubitem was NULL\n"));
}

} // namespace
