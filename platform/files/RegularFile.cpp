// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/RegularFile.h"

#include "core/posix/FolderStream.h"
#include "core/posix/stat_fields.h"
#include "platform/files/DescriptorPath.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/stat.h>

namespace MWCore {
namespace {

/// Opens the item that @p found refers to and @p item describes. Without /proc, opens it by name if
/// the name still refers to the same item.
Descriptor reopened(const Descriptor &found, const struct stat &item, int folder,
                    const QByteArray &path, int keep) {
    constexpr int kFlags = O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY;
    Descriptor opened(open(pathOfDescriptor(found.number()).constData(), kFlags));
    if (opened || errno != ENOENT)
        return opened;
    struct stat now = {};
    opened = Descriptor(openat(folder, path.constData(), kFlags | keep));
    const bool isSame = opened && fstat(opened.number(), &now) == 0 && isSameFile(now, item);
    if (opened && !isSame)
        errno = EAGAIN; // replaced in between
    return isSame ? std::move(opened) : Descriptor();
}

/// Examines the item before opening it, and opens exactly the item that it examined.
Descriptor openIf(bool (*isWanted)(mode_t mode), int folder, const QByteArray &path,
                  FinalLink links, OSStatus *status) {
    const int keep = links == FinalLink::Keep ? O_NOFOLLOW : 0;
    const Descriptor found(openat(folder, path.constData(), O_PATH | O_CLOEXEC | keep));
    struct stat item = {};
    if (!found || fstat(found.number(), &item) != 0) {
        *status = errno == ESTALE ? ioErr : statusFromErrno(errno);
        return {};
    }
    if (!isWanted(item.st_mode)) {
        *status = errFSOperationNotSupported;
        return {};
    }
    Descriptor opened = reopened(found, item, folder, path, keep);
    *status = opened ? noErr : statusFromErrno(errno);
    if (*status == fnfErr)
        *status = ioErr; // it existed
    return opened;
}

} // namespace

Descriptor openRegularFileAt(int folder, const QByteArray &path, FinalLink links,
                             OSStatus *status) {
    return openIf([](mode_t mode) { return S_ISREG(mode); }, folder, path, links, status);
}

Descriptor openRegularFile(const QByteArray &path, FinalLink links, OSStatus *status) {
    return openRegularFileAt(AT_FDCWD, path, links, status);
}

Descriptor openFileOrFolderAt(int folder, const QByteArray &path, OSStatus *status) {
    return openIf(isFileOrFolder, folder, path, FinalLink::Keep, status);
}

Descriptor openFolderAt(int folder, const char *path, FinalLink link, OSStatus *status) {
    Descriptor opened(
        openat(folder, path, kReadFolder | (link == FinalLink::Keep ? O_NOFOLLOW : 0)));
    if (status)
        *status = opened ? noErr : statusFromErrno(errno);
    return opened;
}

std::optional<QByteArray> readAt(int descriptor, int64_t offset, int64_t limit, OSStatus *status) {
    QByteArray bytes(limit, Qt::Uninitialized);
    qsizetype length = 0;
    while (length < limit) {
        const ssize_t count = pread(descriptor, bytes.data() + length,
                                    static_cast<std::size_t>(limit - length), offset + length);
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0) {
            *status = statusFromErrno(errno);
            return std::nullopt;
        }
        if (count == 0)
            break;
        length += count;
    }
    bytes.truncate(length);
    *status = noErr;
    return bytes;
}

std::optional<QByteArray> readStartOf(const QByteArray &path, int64_t length, FinalLink link,
                                      OSStatus *status) {
    const Descriptor file = openRegularFile(path, link, status);
    return file ? readAt(file.number(), 0, length, status) : std::nullopt;
}

std::optional<QByteArray> readWhole(int descriptor, int64_t limit, OSStatus *status) {
    struct stat item = {};
    *status = fstat(descriptor, &item) == 0 ? noErr : statusFromErrno(errno);
    if (*status == noErr && item.st_size > limit)
        *status = fileBoundsErr;
    return *status == noErr ? readAt(descriptor, 0, item.st_size, status) : std::nullopt;
}

std::optional<QByteArray> readRegularFile(const QByteArray &path, int64_t limit, FinalLink links,
                                          OSStatus *status) {
    const Descriptor file = openRegularFile(path, links, status);
    return file ? readWhole(file.number(), limit, status) : std::nullopt;
}

} // namespace MWCore
