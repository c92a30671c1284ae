// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// Makes alias records.
#include "core/posix/Descriptor.h"
#include "platform/files/ItemIdentity.h"
#include "platform/files/MountTable.h"
#include "platform/files/PathParts.h"
#include "platform/references/AliasResolution.h"
#include "platform/references/RecordedFileSystem.h"

#include <climits>
#include <cstdlib>
#include <memory>

#include <fcntl.h>
#include <sys/stat.h>

namespace MWCore {
namespace {

/// @p path with the links in its folders resolved; unchanged if they cannot be resolved.
QByteArray realPathOf(const QByteArray &path) {
    const PathParts parts(path);
    const QByteArray folder = withoutLinks(parts.parent);
    if (folder.isEmpty() || parts.name.isEmpty() || isDots(parts.name))
        return path;
    const QByteArray real = pathIn(folder, parts.name);
    return real.size() < PATH_MAX ? real : path;
}

std::vector<uint64_t> ancestorsOf(const QByteArray &realPath) {
    std::vector<uint64_t> inodes;
    Descriptor folder(open("/", O_PATH | O_DIRECTORY | O_CLOEXEC));
    for (const QByteArray &name : namesOf(realPath)) {
        struct stat item = {};
        if (fstat(folder.number(), &item) != 0)
            break;
        inodes.push_back(item.st_ino);
        folder = Descriptor(openat(folder.number(), name.constData(), O_PATH | O_CLOEXEC));
    }
    return inodes;
}

/// Adds the file system of @p folder: its id and what the mount table says about it.
void addFileSystem(const QByteArray &folder, AliasRecord &record) {
    const Descriptor opened(open(folder.constData(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
    record.fileSystem = fileSystemOf(opened.number());
    const std::vector<Mount> mounts = mountTable();
    const Mount *const mount = mountOf(folder, mounts);
    if (!mount)
        return;
    record.mountPointLength = static_cast<uint32_t>(mount->mountPoint.size());
    record.fileSystemType = mount->type;
    record.source = mount->source;
}

/// The deepest existing folder above the item.
QByteArray folderAbove(const QByteArray &path, struct stat *item) {
    QByteArray folder = PathParts(path).parent;
    while (folder.size() > 1 && lstat(folder.constData(), item) != 0)
        folder = PathParts(folder).parent;
    return folder;
}

} // namespace

QByteArray withoutLinks(const QByteArray &path) {
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.constData(), nullptr),
                                                           &std::free);
    return real.get();
}

std::optional<AliasRecord> aliasRecordOf(const QByteArray &path, OSStatus *status) {
    const auto identity = identityOf(AT_FDCWD, path.constData(), status);
    if (!identity)
        return std::nullopt;
    AliasRecord record;
    record.path = path;
    record.realPath = realPathOf(path);
    record.identity = *identity;
    addFileSystem(record.realPath, record);
    record.ancestors = ancestorsOf(record.realPath);
    return record;
}

AliasRecord recordOf(const FSRef &ref) {
    AliasRecord record;
    record.path = ref.path;
    record.realPath = realPathOf(ref.path);
    record.identity = ref.identity;
    // The item may be gone, but the deepest existing folder above it is on the same file system if
    // the device number is the same: it does not change while the file system is mounted.
    struct stat item = {};
    const QByteArray folder = folderAbove(record.realPath, &item);
    if (stat(folder.constData(), &item) == 0 && item.st_dev == ref.identity.device)
        addFileSystem(folder, record);
    return record;
}

} // namespace MWCore
