// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/RegularFile.h"

#include <cerrno>
#include <cstdio>

#include <fcntl.h>
#include <sys/stat.h>

namespace MWCore {
namespace {

/// The text by which an open descriptor can be opened once more, with other rights.
struct DescriptorPath {
    explicit DescriptorPath(int number) {
        std::snprintf(text, sizeof text, "/proc/self/fd/%d", number);
    }
    char text[32];
};

} // namespace

Descriptor openRegularFile(const QByteArray &path, Links links, OSStatus *status) {
    const int keep = links == Links::Keep ? O_NOFOLLOW : 0;
    const Descriptor found(open(path.constData(), O_PATH | O_CLOEXEC | keep));
    struct stat item = {};
    if (!found || fstat(found.number(), &item) != 0) {
        *status = statusFromErrno(errno);
        return {};
    }
    if (!S_ISREG(item.st_mode)) {
        *status = errFSOperationNotSupported;
        return {};
    }
    Descriptor file(open(DescriptorPath(found.number()).text, O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    *status = file ? noErr : statusFromErrno(errno);
    return file;
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

std::optional<QByteArray> readRegularFile(const QByteArray &path, int64_t limit, Links links,
                                          OSStatus *status) {
    const Descriptor file = openRegularFile(path, links, status);
    struct stat item = {};
    if (!file)
        return std::nullopt;
    if (fstat(file.number(), &item) != 0) {
        *status = statusFromErrno(errno);
        return std::nullopt;
    }
    if (item.st_size > limit) {
        *status = fileBoundsErr;
        return std::nullopt;
    }
    return readAt(file.number(), 0, item.st_size, status);
}

} // namespace MWCore
