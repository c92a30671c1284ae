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

/// The metadata that can always be read with two system calls.
struct QuickResult {
    FinderInfo info;    ///< of the plain extended attribute only
    StoredParts unread; ///< parts that other extended attributes may hold
    OSStatus status = noErr;
};

/// The Finder information; all zero if the value does not have 32 bytes.
FinderInfo plainInfo(const QByteArray &path, const char *name) {
    std::array<char, FinderInfo::kLength> value{};
    const ssize_t length = lgetxattr(path.constData(), name, value.data(), value.size());
    return length == FinderInfo::kLength ? FinderInfo::fromBytes({value.data(), length})
                                         : FinderInfo();
}

bool holdsFork(const char *attribute) {
    return std::ranges::any_of(kForkAttributes, [attribute](const ForkAttribute &place) {
        return std::strcmp(attribute, place.name) == 0;
    });
}

QuickResult failedResult(int error) {
    if (error == ERANGE)
        return {{}, StoredPart::FinderInfo | StoredPart::ResourceFork};
    if (error == EOPNOTSUPP) // the file system has no extended attributes
        return {};
    return {{}, {}, statusFromErrno(error)};
}

QuickResult readQuickly(const QByteArray &path) {
    char names[1024]; // a longer list is not read here
    const ssize_t length = llistxattr(path.constData(), names, sizeof names);
    if (length < 0)
        return failedResult(errno);
    const auto plain = conventions().begin();
    QuickResult result;
    for (const char *name = names; name < names + length; name += std::strlen(name) + 1) {
        for (auto convention = plain; convention != conventions().end(); ++convention) {
            if (std::strcmp(name, convention->attribute) != 0)
                continue;
            if (convention == plain)
                result.info = plainInfo(path, name);
            else
                result.unread |= StoredPart::FinderInfo;
        }
        if (holdsFork(name))
            result.unread |= StoredPart::ResourceFork;
    }
    return result;
}

} // namespace

StoredMetadata readStoredMetadata(const QByteArray &path, StoredParts parts, Sidecars sidecars) {
    StoredMetadata metadata;
    MetadataReader reader(path, sidecars);
    if (parts & StoredPart::FinderInfo)
        metadata.finderInfoStatus = readFinderInfo(reader, &metadata.finderInfo);
    if (parts & StoredPart::ResourceFork)
        metadata.resourceForkStatus = resourceForkSize(reader, &metadata.resourceFork);
    return metadata;
}

StoredMetadata readStoredMetadataWithin(TimeBudget &timeBudget, const QByteArray &path,
                                        StoredParts parts, Sidecars sidecars) {
    const QuickResult quick = readQuickly(path);
    StoredMetadata metadata = {quick.info, quick.status, {}, quick.status};
    const StoredParts unread = sidecars == Sidecars::Absent ? parts & quick.unread : parts;
    if (!unread)
        return metadata;
    const TimeBudget::Use use(timeBudget);
    if (use.isGranted())
        return readStoredMetadata(path, parts, sidecars);
    if (unread & StoredPart::FinderInfo)
        metadata.finderInfoStatus = fileBoundsErr;
    if (unread & StoredPart::ResourceFork)
        metadata.resourceForkStatus = fileBoundsErr;
    return metadata;
}

} // namespace MWCore
