// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/catalogue/ResourceFile.h"

#include "core/private/Descriptor.h"
#include "platform/files/PathParts.h"
#include "platform/formats/ResourceMap.h"
#include "platform/metadata/MetadataStore.h"
#include "platform/references/AliasResolution.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>

namespace MWCore {

struct ResourceFile::Fork {
    FSRef item;
    ForkPermission permission;
    ResourceMap map;
    bool isChanged = false;
};

OSStatus FSCreateResFile(const FSRef &parent, const QByteArray &name, FSRef *newRef) {
    QByteArray path;
    if (const OSStatus status = currentPath(parent, &path); status != noErr)
        return status;
    if (name.isEmpty() || name.contains('/') || name.contains('\0'))
        return bdNamErr;
    path = pathIn(path, name);
    constexpr mode_t kReadAndWrite = 0666;
    if (!Descriptor(
            ::open(path.constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kReadAndWrite)) &&
        errno != EEXIST)
        return statusFromErrno(errno);
    FSRef made;
    OSStatus status = FSPathMakeRef(path, &made);
    if (status == noErr && readResourceFork(path, &status))
        return dupFNErr;
    if (status == resFNotFound)
        status = writeResourceFork(path, ResourceMap().toBytes().value_or(QByteArray()));
    if (status == noErr && newRef)
        *newRef = made;
    return status;
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
    auto fork = std::make_unique<Fork>(Fork{ref, permission, std::move(*map)});
    return std::unique_ptr<ResourceFile>(new ResourceFile(std::move(fork)));
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
    fork_->map.put({type, id, name.isEmpty() ? std::nullopt : std::optional(name), 0, data});
    fork_->isChanged = true;
    return noErr;
}

OSStatus ResourceFile::removeResource(uint32_t type, int16_t id) {
    if (fork_->permission != fsRdWrPerm)
        return permErr;
    if (!fork_->map.remove(type, id))
        return resNotFound;
    fork_->isChanged = true;
    return noErr;
}

OSStatus ResourceFile::close() {
    if (!fork_->isChanged)
        return noErr;
    const bool isEmpty = fork_->map.resources().empty();
    const auto bytes = isEmpty ? QByteArray() : fork_->map.toBytes();
    QByteArray path;
    OSStatus status = currentPath(fork_->item, &path);
    if (status == noErr)
        status = bytes ? writeResourceFork(path, *bytes) : fileBoundsErr;
    if (status == noErr)
        fork_->isChanged = false;
    return status;
}

} // namespace MWCore
