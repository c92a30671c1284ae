// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// Creation, the record, and destruction.
#include "model/item/MXFileSystemObject.h"

#include "core/mfs_path.h"
#include "core/posix/device_paths.h"
#include "model/item/ItemState.h"
#include "model/listing/ListedKinds.h"
#include "model/listing/ListedTree.h"
#include "model/listing/ListingTime.h"
#include "platform/foundation/FileSystemText.h"
#include "platform/foundation/Log.h"
#include "platform/foundation/MXAssertionHandler.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <iterator>
#include <utility>

namespace MWCore {
namespace {

constexpr int32_t kTextKeys[] = {
    MFS_KEY_ACCESS_PERMS,
    MFS_KEY_DATE_MODIFIED,
    MFS_KEY_NAME,
    MFS_KEY_OWNER,
    MFS_KEY_GROUP,
    MFS_KEY_SIZE_TEXT,
    MFS_KEY_COMPLETE_ALIAS_PATH,
    MFS_KEY_ALIAS_LOCATION,
    MFS_KEY_COMPLETE_PATH,
    MFS_KEY_PARENT_PATH,
    MFS_KEY_EXTENSION,
};

bool isTextKey(int32_t key) {
    return std::ranges::find(kTextKeys, key) != std::end(kTextKeys);
}

/// Also null if a host cleared the pointer but not `has_object`.
MXFileSystemObject *objectOf(const mfs_fso *record) {
    return mfs_fso_has_object(record) ? static_cast<MXFileSystemObject *>(mfs_fso_object(record))
                                      : nullptr;
}

void logUnusable(const QString &path) {
    if (path.isNull())
        qCWarning(mwcoreLog, "MXFileSystemObject + ( id ) newFSOForLocalPath [ thePath was null ]");
    else
        qCWarning(mwcoreLog).noquote().nospace()
            << "MXFileSystemObject + ( id ) newFSOForLocalPath could not get file system rep [ "
            << path << " ]";
}

/// The status for an `errno` value of the core's listing, where some have a special meaning.
OSStatus statusOfListing(int error) {
    switch (error) {
    case EAGAIN:
        return folderChangesErr;
    case ENOTDIR:
        return errFSNotAFolder;
    default:
        return statusFromErrno(error);
    }
}

} // namespace

MXFileSystemObject::MXFileSystemObject() = default;

MXFileSystemObject::~MXFileSystemObject() {
    _setCStruct(nullptr);
    if (contents_) {
        contents_->unfilteredItems.clear();
        release(std::move(contents_->actualContents));
    }
}

/// Iteratively: a host may nest folders to any depth.
void MXFileSystemObject::release(QList<Ptr> children) {
    while (!children.isEmpty()) {
        const Ptr child = children.takeLast();
        const bool isLast = child->ref.loadRelaxed() == 1;
        if (!isLast || !child->contents_)
            continue;
        child->contents_->unfilteredItems.clear();
        children += std::exchange(child->contents_->actualContents, {});
    }
}

MXFileSystemObject::Ptr MXFileSystemObject::alloc() const {
    return init();
}

MXFileSystemObject::Ptr MXFileSystemObject::init() {
    return Ptr(new MXFileSystemObject);
}

MXFileSystemObject::Ptr
MXFileSystemObject::newFSOForLocalPath(const QString &path, bool assimilatingContents,
                                       OSStatus *error, const MXFileSystemObject *prototype) {
    return newForLocalPath(path, assimilatingContents, Messages::Logged, error, prototype);
}

MXFileSystemObject::Ptr
MXFileSystemObject::newFSOForLocalPath(const QString &path, OSStatus *error,
                                       const MXFileSystemObject *prototype) {
    constexpr bool kAssimilating = true;
    return newForLocalPath(path, kAssimilating, Messages::None, error, prototype);
}

MXFileSystemObject::Ptr MXFileSystemObject::newForLocalPath(const QString &path,
                                                            bool assimilatingContents,
                                                            Messages messages, OSStatus *error,
                                                            const MXFileSystemObject *prototype) {
    const bool isLogged = messages == Messages::Logged;
    const auto bytes = fileSystemRepresentation(path);
    if (path.isNull() || !bytes) {
        if (isLogged)
            logUnusable(path);
        if (error)
            *error = bdNamErr;
        return {};
    }
    ListedKinds kinds(InspectionContext::kForListing,
                      assimilatingContents ? listingTime(*bytes) : 0);
    errno = 0;
    mfs_fso *const record = mfs_fso_get_local_fso_visiting(
        bytes->constData(), assimilatingContents ? &ListedKinds::visit : nullptr, &kinds);
    const OSStatus listing = statusOfListing(errno);
    if (error)
        *error = record ? noErr : listing;
    if (!record) {
        if (isLogged)
            qCWarning(mwcoreLog, "MXFileSystemObject + ( id ) newFSOForLocalPath:(NSString "
                                 "*)thePath Failed to get item information");
        return {};
    }
    Ptr object = wrap(record, ListedTree::own(record), prototype);
    if (listing != noErr)
        object->contents().error = listing;
    else if (mfs_fso_isDir(record) && isDevicePath(bytes->constData()))
        object->contents().error = deviceFolderErr;
    object->identify();
    if (assimilatingContents && (object->isDir() || object->isVolume()))
        object->assimilate(&kinds);
    return object;
}

MXFileSystemObject::Ptr MXFileSystemObject::newFSOWithCStruct(mfs_fso *record,
                                                              const MXFileSystemObject *prototype) {
    if (!record) {
        failAssertion(QStringLiteral("MXFilesystemObject : File Info Was NULL"));
        return {};
    }
    const bool isNew = !objectOf(record);
    Ptr object = wrap(record, isNew ? ListedTree::of(record) : Tree(), prototype);
    if (isNew && object->isRemote() && object->isFolder())
        object->performAssimilation();
    return object;
}

MXFileSystemObject::Ptr
MXFileSystemObject::newFSOForLocalItem(const QString &path, OSStatus *error,
                                       const MXFileSystemObject *prototype) {
    const auto bytes = path.isNull() ? std::nullopt : fileSystemRepresentation(path);
    mfs_fso *const record = bytes ? mfs_fso_get_local_item(bytes->constData()) : nullptr;
    const int cause = errno;
    if (error)
        *error = record ? noErr : bytes ? statusOfListing(cause) : bdNamErr;
    if (!record)
        return {};
    Ptr object = wrap(record, ListedTree::own(record), prototype);
    object->identify();
    return object;
}

/// The object that wraps @p record, or a new one that shares @p tree.
MXFileSystemObject::Ptr MXFileSystemObject::wrap(mfs_fso *record, const Tree &tree,
                                                 const MXFileSystemObject *prototype) {
    if (MXFileSystemObject *const known = objectOf(record))
        return Ptr(known);
    Ptr object = prototype ? prototype->alloc() : init();
    object->record_ = record;
    object->tree_ = tree;
    mfs_fso_object_set(record, object.data());
    return object;
}

void MXFileSystemObject::_setCStruct(mfs_fso *record) {
    if (record_ && record_->object == this) {
        record_->object = nullptr;
        record_->has_object = 0;
    }
    record_ = record;
    tree_ = record ? ListedTree::of(record) : Tree();
}

int32_t MXFileSystemObject::_fso_get_int_for_attribute(int32_t key) const {
    return record_ && !isTextKey(key) && key != MFS_KEY_PARENT
               ? static_cast<int32_t>(mfs_fso_get_item_for_key(record_, key))
               : 0;
}

QString MXFileSystemObject::_fso_get_string_for_attribute(int32_t key) const {
    if (!record_ || !isTextKey(key))
        return {};
    auto *const text =
        reinterpret_cast<char *>(static_cast<intptr_t>(mfs_fso_get_item_for_key(record_, key)));
    QString result = stringWithFileSystemRepresentation(text);
    if (key == MFS_KEY_SIZE_TEXT || (key == MFS_KEY_PARENT_PATH && text != mfs_path_root))
        std::free(text);
    return result;
}

void MXFileSystemObject::dumpToStdOut() const {
    mfs_fso_dump(record_);
}

MXFileSystemObject::RareTexts &MXFileSystemObject::rareTexts() const {
    if (!rareTexts_)
        rareTexts_ = std::make_unique<RareTexts>();
    return *rareTexts_;
}

MXFileSystemObject::Contents &MXFileSystemObject::contents() {
    if (!contents_)
        contents_ = std::make_unique<Contents>();
    return *contents_;
}

} // namespace MWCore
