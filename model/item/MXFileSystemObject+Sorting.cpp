// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// The order of a folder's children.
#include "model/item/ItemState.h"
#include "model/item/MXFileSystemObject.h"
#include "model/listing/ListedTree.h"
#include "model/text/NameOrder.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace MWCore {
namespace {

using Items = QList<MXFileSystemObject::Ptr>;

template <typename Value> int threeWay(const Value &one, const Value &other) {
    return one < other ? -1 : one > other ? 1 : 0;
}

/// In a new order, given the place from which each comes. Nothing is copied.
template <typename Entries, typename IndexOf>
Items rearranged(Items &&items, const Entries &entries, IndexOf indexOf) {
    Items sorted;
    sorted.reserve(items.size());
    for (const auto &entry : entries)
        sorted += std::move(items[indexOf(entry)]);
    return sorted;
}

/// Sorts stably by a key, which is made once for each item.
template <typename MakeKey> Items sortedByKey(Items items, MakeKey makeKey) {
    struct Entry {
        decltype(makeKey(*items.front())) key;
        qsizetype index;
    };
    std::vector<Entry> entries;
    entries.reserve(static_cast<std::size_t>(items.size()));
    for (const auto &item : std::as_const(items))
        entries.push_back({makeKey(*item), static_cast<qsizetype>(entries.size())});
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry &one, const Entry &other) { return one.key < other.key; });
    return rearranged(std::move(items), entries, [](const Entry &entry) { return entry.index; });
}

template <typename MakeName> Items sortedByName(Items items, MakeName nameOf) {
    NameSorter names;
    for (const auto &item : std::as_const(items))
        names.add(nameOf(*item));
    return rearranged(std::move(items), names.lastToFirst(),
                      [](uint32_t index) { return qsizetype(index); });
}

/// Both forks; 0 for a folder.
uint64_t sizeForSorting(const MXFileSystemObject &item) {
    const auto size = item.isFolder() ? MXFileSystemObjectSize::Ptr() : item.sizeObject();
    return size ? size->totalSize() : 0;
}

} // namespace

MXSortAttribute MXFileSystemObject::sortAttribute() const {
    return contents_ ? contents_->sortAttribute : MXSortAttributeNone;
}

MXSortOrder MXFileSystemObject::sortOrder() const {
    return contents_ ? contents_->sortOrder : MXSortOrderNone;
}

void MXFileSystemObject::setSortsByAttribute(MXSortAttribute attribute, MXSortOrder withOrder) {
    contents().sortAttribute = attribute;
    contents().sortOrder = withOrder;
    removeHiddenItems();
    Items &list = contents_->isFiltered ? contents_->unfilteredItems : contents_->actualContents;
    switch (attribute) {
    case MXSortAttributeAccess:
        list = sortedByKey(std::exchange(list, {}),
                           [](const auto &item) { return item.permissions()->intValue(); });
        break;
    case MXSortAttributeDate:
        list = sortedByKey(std::exchange(list, {}),
                           [](const auto &item) { return item.dateAsTimeT(); });
        break;
    case MXSortAttributeName:
        list = sortedByName(std::exchange(list, {}),
                            [](const auto &item) { return item.nameBytes(); });
        break;
    case MXSortAttributeSize:
        list = sortedByKey(std::exchange(list, {}),
                           [](const auto &item) { return sizeForSorting(item); });
        break;
    default:
        return;
    }
    if (withOrder == MXSortOrderReversed)
        std::reverse(list.begin(), list.end());
}

QList<MXFileSystemObject::Ptr> MXFileSystemObject::_swapArray(const QList<Ptr> &items) {
    return {items.rbegin(), items.rend()};
}

int MXFileSystemObject::_sortByPermissions(const MXFileSystemObject &other) const {
    return threeWay(permissions()->intValue(), other.permissions()->intValue());
}

int MXFileSystemObject::_sortByDate(const MXFileSystemObject &other) const {
    return threeWay(dateAsTimeT(), other.dateAsTimeT());
}

int MXFileSystemObject::_sortByName(const MXFileSystemObject &other) const {
    return threeWay(compareNames(other.nameBytes(), nameBytes()), 0);
}

int MXFileSystemObject::_sortBySize(const MXFileSystemObject &other) const {
    return threeWay(sizeForSorting(*this), sizeForSorting(other));
}

} // namespace MWCore
