// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// The order of a folder's children.
#include "model/ItemState.h"
#include "model/ListedTree.h"
#include "model/MXFileSystemObject.h"
#include "model/NameOrder.h"
#include "platform/metadata/MetadataStore.h"

#include <algorithm>
#include <vector>

namespace MWCore {
namespace {

using Items = QList<MXFileSystemObject::Ptr>;

template <typename Value> int threeWay(const Value &receiver, const Value &argument) {
    return receiver < argument ? -1 : receiver > argument ? 1 : 0;
}

/// Sorted, stably, by a key that is made once an item.
template <typename MakeKey> Items sortedByKey(const Items &items, MakeKey makeKey) {
    struct Entry {
        decltype(makeKey(*items.front())) key;
        qsizetype place;
    };
    std::vector<Entry> entries;
    entries.reserve(static_cast<std::size_t>(items.size()));
    for (const auto &item : items)
        entries.push_back({makeKey(*item), static_cast<qsizetype>(entries.size())});
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry &one, const Entry &other) { return one.key < other.key; });
    Items sorted;
    sorted.reserve(items.size());
    for (const Entry &entry : entries)
        sorted += items[entry.place];
    return sorted;
}

Items sortedByName(const Items &items) {
    NameSorter names;
    for (const auto &item : items)
        names.add(item->name());
    Items sorted;
    sorted.reserve(items.size());
    for (const uint32_t place : names.lastToFirst())
        sorted += items[place];
    return sorted;
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
    Items sorted = visibleList();
    switch (attribute) {
    case MXSortAttributeAccess:
        sorted =
            sortedByKey(sorted, [](const auto &item) { return item.permissions()->intValue(); });
        break;
    case MXSortAttributeDate:
        sorted = sortedByKey(sorted, [](const auto &item) { return item.dateAsTimeT(); });
        break;
    case MXSortAttributeName:
        sorted = sortedByName(sorted);
        break;
    case MXSortAttributeSize:
        sorted = sortedByKey(sorted, [](const auto &item) { return item.sizeForSorting(); });
        break;
    default:
        return;
    }
    if (withOrder == MXSortOrderReversed)
        sorted = _swapArray(sorted);
    (contents_->isFiltered ? contents_->unfilteredItems : contents_->actualContents) = sorted;
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
    return threeWay(compareNames(other.name(), name()), 0);
}

int MXFileSystemObject::_sortBySize(const MXFileSystemObject &other) const {
    return threeWay(sizeForSorting(), other.sizeForSorting());
}

/// Bytes of data and resource fork together. Nothing for what has none of its own: a folder, and
/// an item of unknown kind.
uint64_t MXFileSystemObject::sizeForSorting() const {
    if (!record_ || isFolder() || (isLocal() && kind_ == MXItemKindUnknown))
        return 0;
    if (!isLocal())
        return static_cast<uint64_t>(int64_t(record_->size));
    ForkSize fork;
    if (!isLink())
        (void)resourceForkSize(representation(), &fork);
    return static_cast<uint64_t>(mfs_fso_full_size(record_) + fork.logical);
}

} // namespace MWCore
