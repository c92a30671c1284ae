// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/mfs_fso.h"

#include <cstdio>
#include <initializer_list>

namespace {

enum class LineFormat { Text, QuotedText, Number };

struct Line {
    const char *label;
    LineFormat format;
    int32_t key;
};

constexpr Line kName = {"Name", LineFormat::QuotedText, MFS_KEY_NAME};
constexpr Line kSize = {"Size", LineFormat::Number, MFS_KEY_SIZE};
constexpr Line kLinks = {"Links", LineFormat::Number, MFS_KEY_LINKS};
constexpr Line kAccess = {"Access Perms", LineFormat::Text, MFS_KEY_ACCESS_PERMS};
constexpr Line kDate = {"Date Modified", LineFormat::Text, MFS_KEY_DATE_MODIFIED};
constexpr Line kOwner = {"Owner Name", LineFormat::QuotedText, MFS_KEY_OWNER};
constexpr Line kGroup = {"Group Name", LineFormat::QuotedText, MFS_KEY_GROUP};
constexpr Line kPath = {"Complete Path", LineFormat::QuotedText, MFS_KEY_COMPLETE_PATH};
constexpr Line kAlias = {"Alias Location", LineFormat::QuotedText, MFS_KEY_ALIAS_LOCATION};
constexpr Line kCompleteAlias = {"Complete Alias Path", LineFormat::QuotedText,
                                 MFS_KEY_COMPLETE_ALIAS_PATH};
constexpr Line kUrl = {"URL", LineFormat::QuotedText, MFS_KEY_URL};

constexpr Line kFileLines[] = {kName, kSize, kLinks, kAccess, kDate, kOwner, kGroup, kPath};
constexpr Line kLinkLines[] = {kAlias, kCompleteAlias};
// The dump of a subdirectory deliberately names the owner twice.
constexpr Line kFolderLines[] = {kName,  kAccess, kDate, kOwner, kGroup,
                                 kLinks, kOwner,  kPath, kUrl};

template <std::size_t count> void print(const mfs_fso *record, const Line (&lines)[count]) {
    for (const Line &line : lines) {
        const int64_t value = mfs_fso_get_item_for_key(record, line.key);
        if (line.format == LineFormat::Number) {
            std::printf("\t\t%s : %d\n", line.label, static_cast<int32_t>(value));
            continue;
        }
        const auto *const text = reinterpret_cast<const char *>(static_cast<intptr_t>(value));
        std::printf(line.format == LineFormat::QuotedText ? "\t\t%s : >%s<\n" : "\t\t%s : %s\n",
                    line.label, text ? text : "(null)");
    }
}

/// Prints the children in one array; stops and returns false at a null child.
template <std::size_t count>
bool printChildren(const char *heading, const mfs_array *children, const Line (&lines)[count]) {
    std::puts(heading);
    for (int32_t index = 0; index < mfs_array_count(children); ++index) {
        const auto *const child =
            static_cast<const mfs_fso *>(mfs_array_value_at_index(children, index));
        if (!child) {
            std::puts("Subitem was NULL");
            return false;
        }
        print(child, lines);
    }
    return true;
}

} // namespace

void mfs_fso_dump(const mfs_fso *record) {
    if (!record) {
        std::puts("File System Object was null");
        return;
    }
    if (!mfs_fso_isDir(record)) {
        std::puts("Item is a File");
        print(record, kFileLines);
        if (mfs_fso_isLink(record))
            print(record, kLinkLines);
        return;
    }
    std::puts("Item is a directory");
    std::printf("It has %d subdirectories and %d files in it\n", mfs_fso_subdirectory_count(record),
                mfs_fso_file_count(record));
    if (printChildren("Subdirectories", record->subdirectories, kFolderLines))
        printChildren("Files", record->files, kFileLines);
}
