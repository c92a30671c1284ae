// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "Annotations.h"
#include "commands.h"
#include "DisplayText.h"
#include "ItemJson.h"
#include "LocalItem.h"
#include "Output.h"
#include "PermissionText.h"
#include "SizeText.h"
#include "TextBytes.h"

#include <MWCore/Regex.h>

#include <algorithm>
#include <array>
#include <optional>

#include <unistd.h>

namespace MWCore::mwfile {
namespace {

/// Hides what file browsers hide. For a volume, the name of its mount point decides, which is
/// shown.
void hideItems(MXFileSystemObject &folder) {
    folder.invalidateFilteredItems();
    for (const auto &item : folder.visibleItems())
        if (Regex::isHidden(stringWithFileSystemRepresentation(nameInFolder(*item))))
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

/// The short size of an item; "-" for a folder.
SizeText sizeOf(const MXFileSystemObject &item) {
    return item.isDir() ? SizeText{"-", ""} : shortSize(item.size());
}

/// The widths of the columns and of the terminal, computed in advance so that rows can be printed
/// one by one.
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
            makeRoomFor(*item);
    }

private:
    void makeRoomFor(const MXFileSystemObject &item) {
        const SizeText text = sizeOf(item);
        links = std::max(links, static_cast<int>(std::to_string(item.links()).size()));
        size = std::max(size, static_cast<int>(text.number.size()));
        unit = std::max(unit, static_cast<int>(text.unit.size()));
        owner = std::max(owner, DisplayText(bytesOf(item.owner())).columns());
        group = std::max(group, DisplayText(bytesOf(item.group())).columns());
        date = std::max(date, DisplayText(bytesOf(item.date())).columns());
    }
};

std::string blanks(int count) {
    std::string text;
    text.resize(static_cast<std::size_t>(std::max(count, 0)), ' ');
    return text;
}

std::string leftAligned(const std::string &raw, int columns) {
    const DisplayText text(raw);
    return text.text() + blanks(columns - text.columns());
}

std::string rightAligned(const std::string &text, int columns) {
    return blanks(columns - static_cast<int>(text.size())) + text;
}

std::string cells(const MXFileSystemObject &item, const Columns &columns, const Colours &colours) {
    std::string details(1, nodeLetter(item.nodeKind()));
    details += permissionsText(permissionNumber(item));
    details += "  " + rightAligned(std::to_string(item.links()), columns.links);
    details += "  " + leftAligned(bytesOf(item.owner()), columns.owner);
    details += "  " + leftAligned(bytesOf(item.group()), columns.group);
    const SizeText text = sizeOf(item);
    const std::string size = rightAligned(text.number, columns.size) + (columns.unit ? " " : "") +
                             leftAligned(text.unit, columns.unit);
    const std::string date = leftAligned(bytesOf(item.date()), columns.date);
    return colours.dimmed(details) + "  " + size + "  " + colours.dimmed(date) + "  " +
           colours.name(item, DisplayText(nameInFolder(item)).text());
}

/// The row of an item, followed by its annotations. If the terminal would wrap them, they go into a
/// line below, right-aligned.
std::string row(const MXFileSystemObject &item, RowInspection &inspection, const Columns &columns,
                const Colours &colours) {
    const std::string text = cells(item, columns, colours);
    const std::string target = targetAnnotation(item, inspection.targetOf(item), colours);
    const std::string annotation = annotations(item, inspection.metadataOf(item), colours);
    if (target.empty() && annotation.empty())
        return text + "\n";
    const std::string note =
        target + (target.empty() || annotation.empty() ? "" : "  ") + annotation;
    const std::string gap = target.empty() ? "  " : " ";
    if (!columns.line || columnsOf(text + gap + note) <= *columns.line)
        return text + gap + note + "\n";
    return text + "\n" + blanks(*columns.line - columnsOf(note)) + note + "\n";
}

void printRows(const MXFileSystemObject &folder) {
    const Columns columns(folder);
    const Colours colours;
    RowInspection inspection(folder);
    for (const auto &item : folder.visibleItems())
        print(row(*item, inspection, columns, colours));
    const int32_t hidden = folder.isFiltered() ? folder.filteredItemCount() : 0;
    if (hidden > 0 && printsToTerminal())
        print(colours.dimmed(groupedDigits(hidden) + " hidden; --all shows them") + "\n");
}

void printJson(const MXFileSystemObject &folder) {
    RowInspection inspection(folder);
    print("[");
    const char *separator = "\n";
    for (const auto &item : folder.visibleItems()) {
        print(separator +
              itemJson(*item, inspection.metadataOf(*item), inspection.targetOf(*item)).finished());
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
