// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/catalogue/ResourceFile.h"

#include "platform/files/PathParts.h"
#include "platform/formats/ResourceMap.h"
#include "platform/metadata/MetadataChange.h"
#include "platform/metadata/MetadataStore.h"
#include "platform/references/AliasResolution.h"
#include "platform/references/ReferenceLocator.h"

#include <algorithm>
#include <functional>
#include <vector>

#include <sys/stat.h>

namespace MWCore {

struct ResourceFile::Fork {
    using Edit = std::function<void(ResourceMap &)>;

    FSRef item;
    ForkPermission permission;
    ResourceMap map;
    std::vector<Edit> edits; ///< applied by close() to the fork as it is then

    void edit(Edit edit) {
        edit(map);
        edits.push_back(std::move(edit));
    }
};

namespace {

/// Gives an existing item an empty fork.
OSStatus addEmptyFork(const ItemLocator &place, const QByteArray &empty) {
    return changeResourceFork(place, [&empty](QByteArrayView fork, OSStatus *refused) {
        *refused = fork.isEmpty() ? noErr : dupFNErr;
        return empty;
    });
}

OSStatus makeFileWithFork(const ItemLocator &place, const QByteArray &empty) {
    const auto hasNoOtherFork = [&empty](const AppleDouble &sidecar) {
        const QByteArrayView fork = sidecar.content(kResourceForkEntry);
        return fork.isEmpty() || fork == empty;
    };
    return makeItemWithSidecar(place, hasNoOtherFork, [&empty](AppleDouble &sidecar) {
        sidecar.replace(kResourceForkEntry, empty);
    });
}

} // namespace

OSStatus FSCreateResFile(const FSRef &parent, const QByteArray &name, FSRef *newRef) {
    if (name.isEmpty() || name.contains('/') || name.contains('\0'))
        return bdNamErr;
    OSStatus status = noErr;
    const auto place = locatorIn(parent, name, &status);
    if (!place)
        return status;
    const QByteArray empty = ResourceMap().toBytes().value_or(QByteArray());
    struct stat item = {};
    status = makeFileWithFork(*place, empty);
    if (status == dupFNErr && place->examine(&item) == noErr)
        status = addEmptyFork(*place, empty);
    QByteArray folder;
    if (status == noErr && newRef)
        status = currentPath(parent, &folder);
    return status == noErr && newRef ? FSPathMakeRef(pathIn(folder, name), newRef) : status;
}

ResourceFile::ResourceFile(std::unique_ptr<Fork> fork) : fork_(std::move(fork)) {}
ResourceFile::~ResourceFile() = default;

std::unique_ptr<ResourceFile> ResourceFile::open(const FSRef &ref, ForkPermission permission,
                                                 OSStatus *status) {
    QByteArray path;
    *status = currentPath(ref, &path);
    const auto bytes = *status == noErr ? readResourceFork(path, status) : std::nullopt;
    if (!bytes)
        return nullptr;
    auto map = ResourceMap::parse(*bytes);
    if (!map) {
        *status = mapReadErr;
        return nullptr;
    }
    auto fork = std::make_unique<Fork>(Fork{ref, permission, std::move(*map), {}});
    return std::unique_ptr<ResourceFile>(new ResourceFile(std::move(fork)));
}

std::unique_ptr<ResourceFile> ResourceFile::makeUnattached() {
    auto fork = std::make_unique<Fork>(Fork{{}, fsRdWrPerm, {}, {}});
    return std::unique_ptr<ResourceFile>(new ResourceFile(std::move(fork)));
}

std::optional<QByteArray> ResourceFile::toBytes() const {
    return fork_->map.toBytes();
}

std::optional<QByteArray> ResourceFile::getResource(uint32_t type, int16_t id) const {
    const Resource *const resource = fork_->map.find(type, id);
    return resource ? std::optional(resource->data) : std::nullopt;
}

std::optional<QByteArray> ResourceFile::getFirstResource(uint32_t type) const {
    const auto &resources = fork_->map.resources();
    const auto resource = std::ranges::find(resources, type, &Resource::type);
    return resource == resources.end() ? std::nullopt : std::optional(resource->data);
}

OSStatus ResourceFile::addResource(uint32_t type, int16_t id, const QByteArray &name,
                                   const QByteArray &data) {
    if (fork_->permission != fsRdWrPerm)
        return permErr;
    const Resource added = {type, id, name.isEmpty() ? std::nullopt : std::optional(name), 0, data};
    fork_->edit([added](ResourceMap &map) { map.put(added); });
    return noErr;
}

OSStatus ResourceFile::removeResource(uint32_t type, int16_t id) {
    if (fork_->permission != fsRdWrPerm)
        return permErr;
    if (!fork_->map.find(type, id))
        return resNotFound;
    fork_->edit([type, id](ResourceMap &map) { (void)map.remove(type, id); });
    return noErr;
}

OSStatus ResourceFile::close() {
    if (fork_->edits.empty())
        return noErr;
    OSStatus status = noErr;
    const auto place = locatorOf(fork_->item, &status);
    if (place)
        status = changeResourceFork(*place, [this](QByteArrayView fork, OSStatus *refused) {
            return edited(fork, refused);
        });
    if (status == noErr)
        fork_->edits.clear();
    return status;
}

/// @p fork with the edits applied. It is read again, because others may have added resources since
/// it was opened.
QByteArray ResourceFile::edited(QByteArrayView fork, OSStatus *status) const {
    auto map = ResourceMap::parse(fork);
    if (!map) {
        *status = mapReadErr;
        return {};
    }
    for (const auto &edit : fork_->edits)
        edit(*map);
    const auto bytes = map->resources().empty() ? QByteArray() : map->toBytes();
    *status = bytes ? noErr : fileBoundsErr;
    return bytes.value_or(QByteArray());
}

} // namespace MWCore
