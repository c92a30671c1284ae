// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/metadata/ExtendedAttributes.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace MWCore {
namespace {

/// listxattrat(2), since Linux 6.13.
constexpr long kListXattrAt =
#if defined(SYS_listxattrat)
    SYS_listxattrat;
#elif defined(__alpha__) || defined(__mips__)
    -1; // no call: these number their calls differently
#else
    465;
#endif

OSStatus statusOf(int result) {
    if (result == 0)
        return noErr;
    return errno == ENODATA ? resNotFound : statusFromErrno(errno);
}

} // namespace

AttributeNames::AttributeNames(const QByteArray &path) : names_(kUsualNames) {
    read([&path](char *names, std::size_t size) {
        return llistxattr(path.constData(), names, size);
    });
}

AttributeNames::AttributeNames(int folder, const char *name, const QByteArray &path)
    : names_(kUsualNames) {
    static std::atomic<bool> canListAt = true;
    read([folder, name, &path](char *names, std::size_t size) -> ssize_t {
        if (canListAt.load(std::memory_order_relaxed)) {
            const long length =
                syscall(kListXattrAt, folder, name, AT_SYMLINK_NOFOLLOW, names, size);
            if (length >= 0 || (errno != ENOSYS && errno != EPERM)) // EPERM: blocked by a sandbox
                return length;
            canListAt.store(false, std::memory_order_relaxed);
        }
        return llistxattr(path.constData(), names, size);
    });
}

template <typename List> void AttributeNames::read(List list) {
    ssize_t length = 0;
    while ((length = list(names_.data(), static_cast<std::size_t>(names_.size()))) < 0 &&
           errno == ERANGE && names_.size() < XATTR_LIST_MAX)
        names_.resize(XATTR_LIST_MAX);
    if (length < 0)
        status_ = statusFromErrno(errno);
    names_.resize(std::max<ssize_t>(length, 0));
}

bool AttributeNames::contains(const char *name) const {
    const char *const end = names_.constData() + names_.size();
    for (const char *at = names_.constData(); at < end; at += std::strlen(at) + 1)
        if (std::strcmp(at, name) == 0)
            return true;
    return false;
}

OSStatus statusOfNames(const QByteArray &path, const AttributeNames &names) {
    struct stat item = {};
    if (names.status() != errFSOperationNotSupported)
        return names.status();
    return lstat(path.constData(), &item) == 0 ? noErr : statusFromErrno(errno);
}

std::optional<QByteArray> attribute(const QByteArray &path, const char *name, OSStatus *status,
                                    qsizetype longest) {
    constexpr qsizetype kUsual = 512;
    QByteArray value(std::min(kUsual, longest), Qt::Uninitialized);
    ssize_t length = 0;
    while ((length = lgetxattr(path.constData(), name, value.data(),
                               static_cast<std::size_t>(value.size()))) < 0 &&
           errno == ERANGE && value.size() < longest)
        value.resize(longest);
    *status = length < 0 && errno == ERANGE ? fileBoundsErr : statusOf(length < 0 ? -1 : 0);
    if (length < 0)
        return std::nullopt;
    value.truncate(length);
    return value;
}

int64_t attributeLength(const QByteArray &path, const char *name) {
    return lgetxattr(path.constData(), name, nullptr, 0);
}

OSStatus setAttribute(const QByteArray &path, const char *name, const QByteArray &value,
                      Before before) {
    const int flag = before == Before::Absent ? XATTR_CREATE : XATTR_REPLACE;
    return statusOf(lsetxattr(path.constData(), name, value.constData(),
                              static_cast<std::size_t>(value.size()), flag));
}

OSStatus removeAttribute(const QByteArray &path, const char *name) {
    return statusOf(lremovexattr(path.constData(), name));
}

} // namespace MWCore
