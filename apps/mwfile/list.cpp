// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "apps/mwfile/bytes.h"
#include "apps/mwfile/commands.h"
#include "apps/mwfile/DisplayText.h"
#include "apps/mwfile/ItemJson.h"
#include "apps/mwfile/LocalItem.h"
#include "apps/mwfile/Output.h"
#include "apps/mwfile/PermissionText.h"
#include "apps/mwfile/Remarks.h"
#include "apps/mwfile/SizeText.h"
#include "model/text/Regex.h"

#include <algorithm>
#include <array>
#include <optional>

#include <unistd.h>

namespace MWCore::mwfile {
namespace {

/// Leaves out what file browsers hide. A volume goes by its name in the folder, which is shown.
void hideItems(MXFileSystemObject &folder) {
    folder.invalidateFilteredItems();
    for (const auto &item : folder.visibleItems())
        if (Regex::isHidden(stringWithFileSystemRepresentation(item->cstruct()->name)))
            item->setIsHidden(true);
    folder.setIsFiltered(true);
}

void sort(MXFileSystemObject &folder, Order order, bool reverse) {
    struct Row {
        Order order;
        MXSortAttribute attribute;
        bool startsFromLast; ///< unless it is reversed
    };
    constexpr std::array kRows = {
        Row{Order::Name, MXSortAttributeName, true}, // names come from Z to A
        Row{Order::Date, MXSortAttributeDate, false},
        Row{Order::Size, MXSortAttributeSize, false},
        Row{Order::Access, MXSortAttributeAccess, false},
    };
    const Row &row = *std::ranges::find(kRows, order, &Row::order);
    folder.setSortsByAttribute(row.attribute, row.startsFromLast != reverse ? MXSortOrderReversed
                                                                            : MXSortOrderNatural);
}

/// The short size of an item; a folder has none of its own.
SizeText sizeOf(const mfs_fso &item) {
    return mfs_fso_isDir(&item) ? SizeText{"-", ""} : shortSize(mfs_fso_full_size(&item));
}

/// The widths of the columns and of a whole line, so that rows can be printed one by one.
struct Columns {
    int links = 0;
    int size = 0;
    int unit = 0;
    int owner = 0;
    int group = 0;
    int date = 0;
    std::optional<int> line = terminalColumns(STDOUT_FILENO);

    explicit Columns(const MXFileSystemObject &folder) {
        for (const auto &item : folder.visibleItems())
            makeRoomFor(*item->cstruct());
    }

private:
    void makeRoomFor(const mfs_fso &item) {
        const SizeText text = sizeOf(item);
        links = std::max(links, static_cast<int>(std::to_string(item.links).size()));
        size = std::max(size, static_cast<int>(text.number.size()));
        unit = std::max(unit, static_cast<int>(text.unit.size()));
        owner = std::max(owner, DisplayText(item.owner).columns());
        group = std::max(group, DisplayText(item.group).columns());
        date = std::max(date, DisplayText(item.date_modified).columns());
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
char typeLetter(const MXFileSystemObject &item) {
    switch (item.cstruct()->type) {
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

std::string cells(const MXFileSystemObject &item, const Columns &columns, const Colours &colours) {
    const mfs_fso &record = *item.cstruct();
    std::string facts(1, typeLetter(item));
    facts += permissionsText(permissionNumber(item));
    facts += "  " + rightAligned(std::to_string(record.links), columns.links);
    facts += "  " + leftAligned(record.owner, columns.owner);
    facts += "  " + leftAligned(record.group, columns.group);
    const SizeText text = sizeOf(record);
    const std::string size = rightAligned(text.number, columns.size) + (columns.unit ? " " : "") +
                             leftAligned(text.unit.c_str(), columns.unit);
    const std::string date = leftAligned(record.date_modified, columns.date);
    return colours.quiet(facts) + "  " + size + "  " + colours.quiet(date) + "  " +
           colours.name(item, DisplayText(record.name).text());
}

/// The row, and behind it what is to be said of the item; below it, at the end of the line, where
/// a terminal would break it.
std::string row(const MXFileSystemObject &item, RowLooks &looks, const Columns &columns,
                const Colours &colours) {
    const std::string text = cells(item, columns, colours);
    const std::string target = arrow(item, looks.targetOf(item), colours);
    const std::string remark = remarks(item, looks.marksOf(item), colours);
    if (target.empty() && remark.empty())
        return text + "\n";
    const std::string note = target + (target.empty() || remark.empty() ? "" : "  ") + remark;
    const std::string gap = target.empty() ? "  " : " ";
    if (!columns.line || columnsOf(text + gap + note) <= *columns.line)
        return text + gap + note + "\n";
    return text + "\n" + blanks(*columns.line - columnsOf(note)) + note + "\n";
}

void printRows(const MXFileSystemObject &folder) {
    const Columns columns(folder);
    const Colours colours;
    RowLooks looks(folder);
    for (const auto &item : folder.visibleItems())
        print(row(*item, looks, columns, colours));
    const int32_t hidden = folder.isFiltered() ? folder.filteredItemCount() : 0;
    if (hidden > 0 && printsToTerminal())
        print(colours.quiet(groupedDigits(hidden) + " hidden; --all shows them") + "\n");
}

void printJson(const MXFileSystemObject &folder) {
    RowLooks looks(folder);
    print("[");
    const char *separator = "\n";
    for (const auto &item : folder.visibleItems()) {
        print(separator + itemJson(*item, looks.marksOf(*item), looks.targetOf(*item)).finished());
        separator = ",\n";
    }
    print("\n]\n");
}

} // namespace

void list(const ListOptions &options) {
    const auto folder = listedFolder(options.folder);
    if (!options.all)
        hideItems(*folder);
    sort(*folder, options.order, options.reverse);
    if (options.form == Form::Json)
        printJson(*folder);
    else
        printRows(*folder);
}

} // namespace MWCore::mwfile
