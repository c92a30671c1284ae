// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/metadata/MetadataChange.h"

#include "core/posix/stat_fields.h"
#include "platform/files/AccessRights.h"
#include "platform/files/EmptyFile.h"
#include "platform/metadata/ExtendedAttributes.h"
#include "platform/metadata/Sidecar.h"

#include <algorithm>
#include <chrono>
#include <span>

#include <sys/stat.h>

namespace MWCore {
namespace {

/// Whether an attribute has the value @p expected; nullopt means that it does not exist. An
/// attribute that cannot be read counts as having it.
bool hasValue(const QByteArray &path, const char *name, const std::optional<QByteArray> &expected) {
    OSStatus status = noErr;
    const auto value = attribute(path, name, &status);
    return value == expected || (status != noErr && status != resNotFound);
}

/// resNotFound and dupFNErr mean that another writer changed the attribute in between.
OSStatus replaceValue(const QByteArray &path, const char *name,
                      const std::optional<QByteArray> &before,
                      const std::optional<QByteArray> &after) {
    if (after)
        return setAttribute(path, name, *after, before ? Before::Present : Before::Absent);
    return before ? removeAttribute(path, name) : noErr;
}

bool isConflict(OSStatus status) {
    return status == resNotFound || status == dupFNErr;
}

/// A new sidecar gets the owner, group and access rights of its item, without execute permissions.
/// Without an item it gets those of any new file.
OSStatus accessBeside(const ItemLocator &item, Access *access) {
    struct stat now = {};
    *access = accessOfNewFile();
    OSStatus status = item.examine(&now);
    if (status != noErr)
        return status == fnfErr ? noErr : status;
    *access = {(now.st_mode & kNewFileMode) | S_IRUSR | S_IWUSR, now.st_uid, now.st_gid,
               attribute(item.path(), kAccessList, &status)};
    if (status == resNotFound)
        access->list.emplace();
    return status == resNotFound || status == errFSOperationNotSupported ? noErr : status;
}

} // namespace

void MetadataChange::set(const char *attribute, std::optional<QByteArray> before,
                         std::optional<QByteArray> after) {
    attributes_.push_back({attribute, std::move(before), std::move(after)});
}

AppleDouble *MetadataChange::sidecar(OSStatus *status) {
    *status = noErr;
    if (sidecar_)
        return &*sidecar_;
    const QByteArray name = sidecarName(item_.name());
    *status = errFSOperationNotSupported;
    auto file = name.isEmpty() ? std::nullopt : AtomicFile::begin(item_.sibling(name), status);
    if (!file)
        return nullptr;
    file_.emplace(std::move(*file));
    const auto bytes =
        file_->isThere() ? file_->content(kLargestSidecar, status) : std::optional(QByteArray());
    if (!bytes)
        return nullptr;
    oldSidecar_ = *bytes;
    sidecar_ = file_->isThere() ? AppleDouble::parse(*bytes) : AppleDouble::fresh();
    if (!sidecar_)
        *status = mapReadErr;
    return sidecar_ ? &*sidecar_ : nullptr;
}

/// Does the slow work, whose result nobody else can see yet.
OSStatus MetadataChange::prepareSidecar() {
    if (!sidecar_ || sidecar_->isEmpty() || sidecar_->bytes() == oldSidecar_)
        return noErr;
    if (sidecar_->bytes().size() > kLargestSidecar)
        return fileBoundsErr; // nobody could read or change it afterwards
    Access fresh = {};
    const OSStatus status = accessBeside(item_, &fresh);
    return status == noErr ? file_->prepare(sidecar_->bytes(), fresh) : status;
}

std::optional<OSStatus> MetadataChange::commit(std::optional<FolderLock> &turn) {
    if (const OSStatus status = prepareSidecar(); status != noErr)
        return status;
    if (!turn)
        turn.emplace(item_);
    if (turn->status() != noErr)
        return turn->status();
    if (!isCurrent())
        return std::nullopt;
    OSStatus status = setAttributes();
    if (status == noErr)
        status = putSidecar();
    if (status == noErr && makesItem_)
        status = putItem();
    if (isConflict(status) || (status == noErr && !hasNewValues()))
        return std::nullopt;
    return status;
}

void MetadataChange::sync() const {
    if (sidecar_)
        file_->syncFolder();
}

bool MetadataChange::isCurrent() const {
    struct stat item = {};
    if (makesItem_ && item_.examine(&item) == noErr)
        return false;
    return (!file_ || file_->isCurrent()) &&
           std::ranges::all_of(attributes_, [this](const Attribute &attribute) {
               return hasValue(path(), attribute.name, attribute.before);
           });
}

OSStatus MetadataChange::setAttributes() {
    for (std::size_t index = 0; index < attributes_.size(); ++index) {
        const Attribute &attribute = attributes_[index];
        if (attribute.before == attribute.after)
            continue;
        const OSStatus status =
            replaceValue(path(), attribute.name, attribute.before, attribute.after);
        if (status != noErr) {
            restoreAttributes(index);
            return status;
        }
    }
    return noErr;
}

/// Restores the first @p count attributes.
void MetadataChange::restoreAttributes(std::size_t count) {
    for (const Attribute &attribute : std::span(attributes_).first(count))
        if (attribute.before != attribute.after)
            (void)replaceValue(path(), attribute.name, attribute.after, attribute.before);
}

OSStatus MetadataChange::putSidecar() {
    if (!sidecar_ || (file_->isThere() && sidecar_->bytes() == oldSidecar_))
        return noErr;
    OSStatus status = noErr;
    if (!sidecar_->isEmpty())
        status = file_->put();
    else if (file_->isThere())
        status = file_->remove();
    if (status != noErr)
        restoreAttributes(attributes_.size());
    return status;
}

/// Called while the folder is locked, so that nobody takes the sidecar for one that a killed
/// process left behind.
OSStatus MetadataChange::putItem() const {
    const OSStatus made = makeEmptyFile(item_);
    if (made != noErr && file_)
        (void)file_->remove();
    return made;
}

/// Whether no other program has overwritten the attributes meanwhile.
bool MetadataChange::hasNewValues() const {
    return std::ranges::all_of(attributes_, [this](const Attribute &attribute) {
        return hasValue(path(), attribute.name, attribute.after);
    });
}

OSStatus statusOfKind(const ItemLocator &item) {
    struct stat now = {};
    const OSStatus status = item.examine(&now);
    return status == noErr && !isFileOrFolder(now.st_mode) ? errFSOperationNotSupported : status;
}

OSStatus changeMetadata(const ItemLocator &item, const MetadataPlan &plan) {
    using namespace std::chrono_literals;
    const auto end = std::chrono::steady_clock::now() + 10s;
    constexpr int kQuickAttempts = 3; // that lock the folder only to write
    for (int attempt = 0; std::chrono::steady_clock::now() < end; ++attempt) {
        std::optional<FolderLock> turn;
        if (attempt >= kQuickAttempts)
            turn.emplace(item);
        MetadataChange change(item);
        auto outcome = plan(change);
        if (outcome == noErr)
            outcome = change.commit(turn);
        turn.reset();
        if (outcome == noErr)
            change.sync();
        if (outcome)
            return *outcome;
    }
    return fBsyErr;
}

OSStatus makeItemWithSidecar(const ItemLocator &place,
                             const std::function<bool(const AppleDouble &)> &isLeftOver,
                             const std::function<void(AppleDouble &)> &fill) {
    return changeMetadata(place, [&](MetadataChange &change) -> std::optional<OSStatus> {
        struct stat item = {};
        if (place.examine(&item) == noErr)
            return dupFNErr;
        OSStatus status = noErr;
        AppleDouble *const sidecar = change.sidecar(&status);
        if (!sidecar)
            return status;
        if (!isLeftOver(*sidecar))
            return dupFNErr;
        fill(*sidecar);
        change.makeItem();
        return noErr;
    });
}

} // namespace MWCore
