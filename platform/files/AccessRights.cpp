// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/AccessRights.h"

#include "platform/files/UserAccount.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <memory>
#include <optional>
#include <vector>

#include <QByteArray>
#include <QtEndian>

#include <grp.h>
#include <linux/limits.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace MWCore {
namespace {

constexpr unsigned kReadAndWrite = 6;

/// An access control list (acl(5)) in the kernel's little-endian format.
class AccessList {
public:
    explicit AccessList(QByteArray entries) : entries_(std::move(entries)) {}

    enum Tag : uint16_t { User = 0x02, Group = 0x04 };

    /// The permissions of the first entry with @p tag; for User, of the entry for @p user.
    [[nodiscard]] std::optional<unsigned> permissions(Tag tag, uid_t user = 0) const {
        for (qsizetype at = 4; at + 8 <= entries_.size(); at += 8) {
            const char *const entry = entries_.constData() + at;
            const bool isWanted = qFromLittleEndian<uint16_t>(entry) == tag &&
                                  (tag != User || qFromLittleEndian<uint32_t>(entry + 4) == user);
            if (isWanted)
                return qFromLittleEndian<uint16_t>(entry + 2);
        }
        return std::nullopt;
    }

private:
    QByteArray entries_;
};

bool isMember(uid_t user, gid_t group) {
    const auto account = accountOf(user);
    if (!account)
        return false;
    std::vector<gid_t> groups(1024);
    int count = static_cast<int>(groups.size());
    getgrouplist(account->name.constData(), account->group, groups.data(), &count);
    groups.resize(static_cast<std::size_t>(std::min<int>(count, int(groups.size()))));
    return std::ranges::find(groups, group) != groups.end();
}

struct Lost {
    bool owner;
    bool group;
};

/// Whether everybody whom @p wanted allows to read or write still can if @p lost is not set.
bool keepsAllAccess(const Access &wanted, Lost lost) {
    const AccessList list(wanted.list.value_or(QByteArray()));
    const unsigned mask = wanted.mode >> 3;
    const unsigned others = wanted.mode & kReadAndWrite;
    const unsigned group =
        mask & list.permissions(AccessList::Group).value_or(mask) & kReadAndWrite;
    if (lost.group && (group & ~others))
        return false;
    const unsigned owner = wanted.mode >> 6 & kReadAndWrite;
    if (!lost.owner || wanted.owner == 0 || !(owner & ~others))
        return true;
    if (const auto named = list.permissions(AccessList::User, wanted.owner))
        return !(owner & ~(*named & mask));
    return !lost.group && !(owner & ~group) && isMember(wanted.owner, wanted.group);
}

/// EINVAL means an account that is unknown in the process's user namespace.
bool isForbidden(int error) {
    return error == EPERM || error == EINVAL;
}

OSStatus setOwner(int descriptor, const Access &wanted) {
    struct stat now = {};
    if (fstat(descriptor, &now) != 0)
        return statusFromErrno(errno);
    Lost lost = {wanted.owner != kAnyUser && now.st_uid != wanted.owner,
                 wanted.group != kAnyGroup && now.st_gid != wanted.group};
    if (!lost.owner && !lost.group)
        return noErr;
    if (fchown(descriptor, wanted.owner, wanted.group) == 0)
        return noErr;
    if (!isForbidden(errno))
        return statusFromErrno(errno);
    lost.group = lost.group && fchown(descriptor, kAnyUser, wanted.group) != 0;
    return keepsAllAccess(wanted, lost) ? noErr : permErr;
}

/// Removes the list if @p list is empty, because a new file may inherit one from its folder.
OSStatus setList(int descriptor, const std::optional<QByteArray> &list) {
    if (!list)
        return noErr;
    const int result = list->isEmpty() ? fremovexattr(descriptor, kAccessList)
                                       : fsetxattr(descriptor, kAccessList, list->constData(),
                                                   std::size_t(list->size()), 0);
    return result == 0 || (list->isEmpty() && errno == ENODATA) ? noErr : statusFromErrno(errno);
}

/// Whether an attribute was not copied because this process may not write it.
bool isWriteRefused(int error) {
    return error == EACCES || error == EOPNOTSUPP || isForbidden(error);
}

} // namespace

std::optional<Access> accessOf(int descriptor, OSStatus *status) {
    struct stat now = {};
    *status = fstat(descriptor, &now) == 0 ? noErr : statusFromErrno(errno);
    if (*status != noErr)
        return std::nullopt;
    Access access = {now.st_mode & ACCESSPERMS, now.st_uid, now.st_gid,
                     QByteArray(XATTR_SIZE_MAX, '\0')};
    const ssize_t length = fgetxattr(descriptor, kAccessList, access.list->data(), XATTR_SIZE_MAX);
    const int error = length < 0 ? errno : 0;
    if (error != 0 && error != ENODATA && error != EOPNOTSUPP) {
        *status = statusFromErrno(error);
        return std::nullopt;
    }
    if (error == EOPNOTSUPP)
        access.list.reset();
    else
        access.list->truncate(std::max<ssize_t>(length, 0));
    return access;
}

OSStatus setAccess(int descriptor, const Access &wanted) {
    OSStatus status = setOwner(descriptor, wanted);
    if (status == noErr)
        status = setList(descriptor, wanted.list);
    if (status != noErr)
        return status;
    struct stat now = {};
    if (fstat(descriptor, &now) != 0)
        return statusFromErrno(errno);
    const bool isRight = (now.st_mode & ACCESSPERMS) == wanted.mode; // setting a list changes it
    return isRight || fchmod(descriptor, wanted.mode) == 0 ? noErr : statusFromErrno(errno);
}

OSStatus copyAttributes(int from, int to) {
    const auto names = std::make_unique<char[]>(XATTR_LIST_MAX);
    const auto value = std::make_unique<char[]>(XATTR_SIZE_MAX);
    const ssize_t length = flistxattr(from, names.get(), XATTR_LIST_MAX);
    for (const char *name = names.get(); name < names.get() + length; name += strlen(name) + 1) {
        if (strcmp(name, kAccessList) == 0)
            continue;
        const ssize_t size = fgetxattr(from, name, value.get(), XATTR_SIZE_MAX);
        const bool isCopied =
            size >= 0 && fsetxattr(to, name, value.get(), static_cast<std::size_t>(size), 0) == 0;
        if (!isCopied && errno != ENODATA && !isWriteRefused(errno))
            return statusFromErrno(errno);
    }
    return noErr;
}

} // namespace MWCore
