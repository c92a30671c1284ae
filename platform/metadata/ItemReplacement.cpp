// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/metadata/ItemReplacement.h"

#include "platform/files/AccessRights.h"
#include "platform/files/AtomicFile.h"
#include "platform/files/FolderLock.h"
#include "platform/formats/AppleDouble.h"
#include "platform/metadata/MetadataChange.h"
#include "platform/metadata/Sidecar.h"

#include <cerrno>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace MWCore {
namespace {

constexpr qsizetype kSidecarOverhead = 4096; ///< bytes, more than a new sidecar needs for the rest

/// fnfErr only if there is nothing of that name.
OSStatus removeName(const ItemLocator &place) {
    if (unlinkat(place.folder(), place.name().constData(), 0) == 0)
        return noErr;
    return errno == ESTALE ? ioErr : statusFromErrno(errno);
}

/// Removes a link, fifo, socket or device, which cannot be replaced like a file.
OSStatus removeUnlessFile(const ItemLocator &place) {
    struct stat item = {};
    const OSStatus status = place.examine(&item);
    if (status == fnfErr || (status == noErr && S_ISREG(item.st_mode)))
        return noErr;
    if (status == noErr && S_ISDIR(item.st_mode))
        return permErr;
    return status == noErr ? removeName(place) : status;
}

/// A file that is written but not in its place yet.
std::optional<AtomicFile> prepared(const ItemLocator &place, const QByteArray &content,
                                   OSStatus *status) {
    auto file = AtomicFile::begin(place, status, AtomicFile::Keep::Nothing);
    if (file)
        *status = file->prepare(content, accessOfNewFile());
    return *status == noErr ? std::move(file) : std::nullopt;
}

/// The sidecar comes first: the old file with it has the new fork, while the new file without it
/// would have none.
OSStatus putFiles(const ItemLocator &place, const QByteArray &fork) {
    if (fork.size() > kLargestSidecar - kSidecarOverhead)
        return fileBoundsErr;
    AppleDouble sidecar = AppleDouble::fresh();
    sidecar.replace(kResourceForkEntry, fork);
    OSStatus status = noErr;
    auto second = prepared(place, {}, &status);
    auto first = second
                     ? prepared(place.sibling(sidecarName(place.name())), sidecar.bytes(), &status)
                     : std::nullopt;
    if (!first)
        return status;
    const FolderLock lock(place);
    status = lock.status();
    if (status == noErr)
        status = first->put();
    if (status == noErr)
        status = second->put();
    second->syncFolder();
    return status;
}

} // namespace

OSStatus replaceItem(const ItemLocator &place, const FinderInfo &info, const QByteArray &fork) {
    OSStatus status = removeUnlessFile(place);
    if (status == noErr)
        status = putFiles(place, fork);
    if (status == noErr)
        status = changeFinderInfo(place, [&info](FinderInfo &now) { now = info; });
    return status;
}

OSStatus removeItemAndSidecar(const ItemLocator &place) {
    const FolderLock lock(place);
    struct stat item = {};
    OSStatus status = lock.status();
    if (status == noErr && place.examine(&item) == noErr && S_ISDIR(item.st_mode))
        return permErr;
    if (status == noErr) // the sidecar first, so that it never remains without its item
        status = removeName(place.sibling(sidecarName(place.name())));
    return status == noErr || status == fnfErr ? removeName(place) : status;
}

} // namespace MWCore
