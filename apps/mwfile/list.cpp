// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "apps/mwfile/Colours.h"
#include "apps/mwfile/commands.h"
#include "apps/mwfile/DisplayText.h"
#include "apps/mwfile/ItemJson.h"
#include "apps/mwfile/LocalItem.h"
#include "apps/mwfile/Output.h"
#include "apps/mwfile/PermissionText.h"
#include "apps/mwfile/SizeText.h"
#include "apps/mwfile/sorting.h"

#include <algorithm>

namespace MWCore::mwfile {
namespace {

void collect(const mfs_array *children, bool all, Items &items) {
    for (int32_t index = 0; index < mfs_array_count(children); ++index) {
        const auto *const item =
            static_cast<const mfs_fso *>(mfs_array_value_at_index(children, index));
        if (all || *item->name != '.')
            items.push_back(item);
    }
}

/// The short size of an item; a folder has none of its own.
SizeText sizeOf(const mfs_fso &item) {
    return mfs_fso_isDir(&item) ? SizeText{"-", ""} : shortSize(mfs_fso_full_size(&item));
}

/// The widths of the columns, so that rows can be printed one by one.
struct Columns {
    int links = 0;
    int size = 0;
    int unit = 0;
    int owner = 0;
    int group = 0;
    int date = 0;

    explicit Columns(const Items &items) {
        for (const mfs_fso *const item : items) {
            links = std::max(links, static_cast<int>(std::to_string(item->links).size()));
            const SizeText text = sizeOf(*item);
            size = std::max(size, static_cast<int>(text.number.size()));
            unit = std::max(unit, static_cast<int>(text.unit.size()));
            owner = std::max(owner, DisplayText(item->owner).columns());
            group = std::max(group, DisplayText(item->group).columns());
            date = std::max(date, DisplayText(item->date_modified).columns());
        }
    }
};

std::string blanks(int count) {
    std::string text;
    text.resize(static_cast<std::size_t>(std::max(count, 0)), ' ');
    return text;
}

std::string leftAligned(const char *raw, int columns) {
    const DisplayText text(raw);
    return text.text() + blanks(columns - text.columns());
}

std::string rightAligned(const std::string &text, int columns) {
    return blanks(columns - static_cast<int>(text.size())) + text;
}

/// The letter that stands for an item's kind before its permissions.
char typeLetter(const mfs_fso &item) {
    switch (item.type) {
    case MFS_TYPE_DIRECTORY:
        return 'd';
    case MFS_TYPE_FILE:
        return '-';
    case MFS_TYPE_LINK:
        return 'l';
    default:
        break;
    }
    const NodeKind *const kind = nodeKind(item);
    return kind ? kind->letter : '?';
}

std::string nameCell(const mfs_fso &item, const Colours &colours) {
    std::string cell = colours.name(item, DisplayText(item.name).text());
    if (!mfs_fso_isLink(&item))
        return cell;
    if (item.target_type == MFS_TARGET_UNKNOWN)
        return cell + colours.quiet(" -> nowhere");
    const char *const target = linkTarget(item);
    return cell + colours.quiet(target ? " -> " + DisplayText(target).text()
                                       : " -> something without a path");
}

std::string row(const mfs_fso &item, const Columns &columns, const Colours &colours) {
    std::string facts(1, typeLetter(item));
    facts += permissionsText(item.permissions);
    facts += "  " + rightAligned(std::to_string(item.links), columns.links);
    facts += "  " + leftAligned(item.owner, columns.owner);
    facts += "  " + leftAligned(item.group, columns.group);
    const SizeText text = sizeOf(item);
    const std::string size = rightAligned(text.number, columns.size) + (columns.unit ? " " : "") +
                             leftAligned(text.unit.c_str(), columns.unit);
    const std::string date = leftAligned(item.date_modified, columns.date);
    return colours.quiet(facts) + "  " + size + "  " + colours.quiet(date) + "  " +
           nameCell(item, colours) + "\n";
}

void printRows(const Items &items) {
    const Columns columns(items);
    const Colours colours;
    for (const mfs_fso *const item : items)
        print(row(*item, columns, colours));
}

void printJson(const Items &items) {
    print("[");
    const char *separator = "\n";
    for (const mfs_fso *const item : items) {
        print(separator + itemJson(*item).finished());
        separator = ",\n";
    }
    print("\n]\n");
}

} // namespace

void list(const ListOptions &options) {
    const ItemTree folder = listedFolder(options.folder);
    Items items;
    collect(folder->files, options.all, items);
    collect(folder->subdirectories, options.all, items);
    sort(items, options.order);
    if (options.reverse)
        std::reverse(items.begin(), items.end());
    if (options.form == Form::Json)
        printJson(items);
    else
        printRows(items);
}

} // namespace MWCore::mwfile
