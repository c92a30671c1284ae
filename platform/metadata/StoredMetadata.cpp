// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/metadata/StoredMetadata.h"

#include "platform/metadata/conventions.h"
#include "platform/metadata/ForkAttributes.h"
#include "platform/metadata/MetadataReader.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include <sys/xattr.h>

namespace MWCore {
namespace {

/// What two system calls tell, whatever an item keeps.
struct Glance {
    FinderInfo info;    ///< of the plain extended attribute alone
    StoredParts unseen; ///< what other extended attributes may keep
    OSStatus status = noErr;
};

/// The value of 32 bytes; all zero for anything else.
FinderInfo plainInfo(const QByteArray &path, const char *name) {
    std::array<char, FinderInfo::kLength> value{};
    const ssize_t length = lgetxattr(path.constData(), name, value.data(), value.size());
    return length == FinderInfo::kLength ? FinderInfo::fromBytes({value.data(), length})
                                         : FinderInfo();
}

bool keepsFork(const char *attribute) {
    return std::ranges::any_of(kForkAttributes, [attribute](const ForkAttribute &place) {
        return std::strcmp(attribute, place.name) == 0;
    });
}

Glance failedGlance(int error) {
    if (error == ERANGE)
        return {{}, StoredPart::FinderInfo | StoredPart::ResourceFork};
    if (error == EOPNOTSUPP) // no file of this file system has any
        return {};
    return {{}, {}, statusFromErrno(error)};
}

Glance glanceAt(const QByteArray &path) {
    char names[1024]; // a longer list is not gone through here
    const ssize_t length = llistxattr(path.constData(), names, sizeof names);
    if (length < 0)
        return failedGlance(errno);
    const auto plain = conventions().begin();
    Glance glance;
    for (const char *name = names; name < names + length; name += std::strlen(name) + 1) {
        for (auto convention = plain; convention != conventions().end(); ++convention) {
            if (std::strcmp(name, convention->attribute) != 0)
                continue;
            if (convention == plain)
                glance.info = plainInfo(path, name);
            else
                glance.unseen |= StoredPart::FinderInfo;
        }
        if (keepsFork(name))
            glance.unseen |= StoredPart::ResourceFork;
    }
    return glance;
}

} // namespace

StoredMetadata readStoredMetadata(const QByteArray &path, StoredParts parts, Sidecars sidecars) {
    StoredMetadata metadata;
    MetadataReader look(path, sidecars);
    if (parts & StoredPart::FinderInfo)
        metadata.finderInfoStatus = readFinderInfo(look, &metadata.finderInfo);
    if (parts & StoredPart::ResourceFork)
        metadata.resourceForkStatus = resourceForkSize(look, &metadata.resourceFork);
    return metadata;
}

StoredMetadata readStoredMetadataWithin(TimeBudget &timeBudget, const QByteArray &path,
                                        StoredParts parts, Sidecars sidecars) {
    const Glance glance = glanceAt(path);
    StoredMetadata metadata = {glance.info, glance.status, {}, glance.status};
    const StoredParts unseen = sidecars == Sidecars::Absent ? parts & glance.unseen : parts;
    if (!unseen)
        return metadata;
    const TimeBudget::Use use(timeBudget);
    if (use.isGranted())
        return readStoredMetadata(path, parts, sidecars);
    if (unseen & StoredPart::FinderInfo)
        metadata.finderInfoStatus = fileBoundsErr;
    if (unseen & StoredPart::ResourceFork)
        metadata.resourceForkStatus = fileBoundsErr;
    return metadata;
}

} // namespace MWCore
