// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// The objects of a folder's children, and which of them are shown.
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

/// Remote folders in it are filled, too, but not by recursion: a host may nest them to any depth.
/// @param kinds of the children as the listing found them; null when it was not just made
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
    takeOutHidden();
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
    takeOutHidden();
    lists.unfilteredItems = lists.actualContents;
}

void MXFileSystemObject::hideItem(const Ptr &child) {
    if (contents_ && child)
        contents_->leavingItems += child.data();
}

/// Hiding many children one by one would move the rest of the list each time; so they are noted,
/// and taken out together when somebody looks. The note is the folder's and not the child's, which
/// may go on to the list of another object of the folder.
void MXFileSystemObject::takeOutHidden() const {
    if (!contents_ || contents_->leavingItems.isEmpty())
        return;
    const auto leaving = std::exchange(contents_->leavingItems, {});
    contents_->unfilteredItems.removeIf(
        [&leaving](const Ptr &item) { return leaving.contains(item.data()); });
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
    takeOutHidden();
    return contents_ ? static_cast<int32_t>(contents_->actualContents.size() -
                                            contents_->unfilteredItems.size())
                     : 0;
}

const QList<MXFileSystemObject::Ptr> &MXFileSystemObject::visibleList() const {
    static const QList<Ptr> kNone;
    if (!contents_)
        return kNone;
    if (!contents_->isFiltered) // a host that hides while it goes through all children is here
        return contents_->actualContents;
    takeOutHidden();
    return contents_->unfilteredItems;
}

} // namespace MWCore
