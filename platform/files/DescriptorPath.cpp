// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/DescriptorPath.h"

#include <cerrno>
#include <climits>

#include <fcntl.h>
#include <unistd.h>

namespace MWCore {

QByteArray pathOfDescriptor(int descriptor) {
    return "/proc/self/fd/" + QByteArray::number(descriptor);
}

QByteArray realPathOfDescriptor(int descriptor) {
    const QByteArray path =
        linkText(AT_FDCWD, pathOfDescriptor(descriptor).constData()).value_or(QByteArray());
    return path.startsWith('/') ? path : QByteArray();
}

std::optional<QByteArray> linkText(int folder, const char *name, OSStatus *status) {
    char text[PATH_MAX];
    const ssize_t length = readlinkat(folder, name, text, sizeof text);
    if (status)
        *status = length < 0 ? statusFromErrno(errno) : noErr;
    return length < 0 ? std::nullopt : std::optional(QByteArray(text, length));
}

} // namespace MWCore
