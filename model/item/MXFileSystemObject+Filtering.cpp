// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// The objects of a folder's children, and filtering.
#include "model/item/ItemState.h"
#include "model/item/MXFileSystemObject.h"
#include "model/listing/ListedKinds.h"
#include "model/listing/ListedTree.h"

#include <utility>

namespace MWCore {
namespace {

constexpr uint32_t kNoCount = 0xFFFFFFFF;

mfs_fso *childRecord(const mfs_fso *folder, int32_t index) {
    const int32_t files = mfs_fso_file_count(folder);
    return index < files ? mfs_fso_get_subitem_at_index(folder, index, MFS_FILES)
                         : mfs_fso_get_subitem_at_index(folder, index - files, MFS_SUBDIRECTORIES);
}

} // namespace

OSStatus MXFileSystemObject::contentsError() const {
    return contents_ ? contents_->error : noErr;
}

void MXFileSystemObject::performAssimilation() {
    assimilate(nullptr);
}

/// Also fills remote subfolders; iteratively, as a host may nest them to any depth. @p kinds has
/// the kinds that the listing found; if null, local children are identified one by one.
void MXFileSystemObject::assimilate(const ListedKinds *kinds) {
    makeChildren(kinds);
    QList<MXFileSystemObject *> folders = {this};
    while (!folders.isEmpty())
        for (const Ptr &child : std::as_const(folders.takeLast()->contents().actualContents))
            if (child->isRemote() && child->isFolder() && !child->contents_) {
                child->makeChildren(nullptr);
                folders += child.data();
            }
}

void MXFileSystemObject::makeChildren(const ListedKinds *kinds) {
    Contents &lists = contents();
    removeHiddenItems();
    lists.unfilteredItems.clear();
    release(std::exchange(lists.actualContents, {}));
    const int32_t files = fileCount();
    const int32_t total = files + subFolderCount();
    lists.actualContents.reserve(total);
    for (int32_t index = 0; index < total; ++index) {
        mfs_fso *const record = childRecord(record_, index);
        if (!record)
            continue;
        Ptr child = wrap(record, tree_, this);
        if (kinds)
            child->identifyAs(kinds->of(record, index < files ? index : index - files));
        else if (child->isLocal())
            child->identify();
        lists.actualContents += std::move(child);
    }
}

MXFileSystemObject::Ptr MXFileSystemObject::child_fso_at_index(int32_t index) const {
    mfs_fso *const child = record_ ? childRecord(record_, index) : nullptr;
    return child ? newFSOWithCStruct(child, this) : Ptr();
}

uint32_t MXFileSystemObject::_subdirectoryCount() const {
    return record_ ? static_cast<uint32_t>(subFolderCount()) : kNoCount;
}

uint32_t MXFileSystemObject::_fileCount() const {
    return record_ ? static_cast<uint32_t>(fileCount()) : kNoCount;
}

void MXFileSystemObject::invalidateFilteredItems() {
    Contents &lists = contents();
    lists.isFiltered = false;
    removeHiddenItems();
    lists.unfilteredItems = lists.actualContents;
}

void MXFileSystemObject::hideItem(const Ptr &child) {
    if (contents_ && child)
        contents_->newlyHidden += child.data();
}

/// Removing each hidden child at once would move the rest of the list each time, so hidden children
/// are removed together before the list is used. The folder records them, not the child, which may
/// later be in the list of another object of the same folder.
void MXFileSystemObject::removeHiddenItems() const {
    if (!contents_ || contents_->newlyHidden.isEmpty())
        return;
    const auto hidden = std::exchange(contents_->newlyHidden, {});
    contents_->unfilteredItems.removeIf(
        [&hidden](const Ptr &item) { return hidden.contains(item.data()); });
}

void MXFileSystemObject::setIsHidden(bool /*hidden*/) {
    if (const Ptr folder = parent())
        folder->hideItem(Ptr(this));
}

bool MXFileSystemObject::isFiltered() const {
    return contents_ && contents_->isFiltered;
}

void MXFileSystemObject::setIsFiltered(bool filtered) {
    contents().isFiltered = filtered;
}

int32_t MXFileSystemObject::filteredItemCount() const {
    removeHiddenItems();
    return contents_ ? static_cast<int32_t>(contents_->actualContents.size() -
                                            contents_->unfilteredItems.size())
                     : 0;
}

const QList<MXFileSystemObject::Ptr> &MXFileSystemObject::visibleList() const {
    static const QList<Ptr> kNone;
    if (!contents_)
        return kNone;
    if (!contents_->isFiltered) // leaves hidden items for later: a host may hide more in a loop
        return contents_->actualContents;
    removeHiddenItems();
    return contents_->unfilteredItems;
}

} // namespace MWCore
