// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/references/FSSpec.h"

#include "platform/files/EmptyFile.h"
#include "platform/files/PathParts.h"
#include "platform/foundation/FileSystemText.h"
#include "platform/references/AliasResolution.h"

#include <algorithm>
#include <cerrno>

#include <fcntl.h>

#include <sys/stat.h>

namespace MWCore {
namespace {

/// At most 63 bytes, in whole characters.
qsizetype shownLength(const QByteArray &name) {
    constexpr qsizetype kLongest = 63;
    qsizetype length = std::min(name.size(), kLongest);
    const auto continues = [&name](qsizetype at) { return (name[at] & 0xC0) == 0x80; };
    while (length > 0 && length < name.size() && continues(length))
        --length;
    return length;
}

/// Whether an item exists at @p path, or an empty file was created there.
bool isThere(const QByteArray &path, bool createFileIfNecessary) {
    struct stat item = {};
    if (stat(path.constData(), &item) == 0)
        return true;
    if (!createFileIfNecessary || errno != ENOENT)
        return false;
    OSStatus status = noErr;
    const auto place = ItemLocator::find(path, &status);
    if (place)
        status = makeEmptyFile(*place);
    return status == noErr || (status == dupFNErr && stat(path.constData(), &item) == 0);
}

} // namespace

OSStatus FSMakeSpec(const FSRef &ref, FSSpec *fsSpec) {
    QByteArray path;
    if (const OSStatus status = currentPath(ref, &path); status != noErr)
        return status;
    const PathParts parts(path);
    struct statx item = {};
    struct stat folder = {};
    if (statx(AT_FDCWD, path.constData(), AT_SYMLINK_NOFOLLOW, STATX_MNT_ID, &item) != 0 ||
        stat(parts.parent.constData(), &folder) != 0)
        return statusFromErrno(errno);
    *fsSpec = {};
    fsSpec->vRefNum = static_cast<int16_t>(item.stx_mnt_id);
    fsSpec->parID = static_cast<int32_t>(folder.st_ino);
    fsSpec->name[0] = static_cast<unsigned char>(shownLength(parts.name));
    std::copy_n(parts.name.begin(), fsSpec->name[0], fsSpec->name + 1);
    return noErr;
}

bool FSSpec::getFSSpec(const QString &path, FSSpec *fsSpec, bool createFileIfNecessary) {
    FSRef ref;
    return CarbonFSRefCreation::getFSRef(path, &ref, createFileIfNecessary) &&
           FSMakeSpec(ref, fsSpec) == noErr;
}

bool CarbonFSRefCreation::getFSRef(const QString &path, FSRef *fsRef, bool createFileIfNecessary) {
    const auto bytes = fileSystemRepresentation(path);
    return bytes && isThere(*bytes, createFileIfNecessary) && FSPathMakeRef(*bytes, fsRef) == noErr;
}

} // namespace MWCore
