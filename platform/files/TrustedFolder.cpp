// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/TrustedFolder.h"

#include "platform/files/AccessRights.h"
#include "platform/files/DescriptorPath.h"
#include "platform/files/PathParts.h"
#include "platform/files/UserAccount.h"

#include <cerrno>
#include <vector>

#include <QList>

#include <fcntl.h>
#include <linux/magic.h>
#include <linux/openat2.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/vfs.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace MWCore {
namespace {

constexpr int kFolder = O_PATH | O_DIRECTORY | O_CLOEXEC;

/// Opens the folder at @p path in one call. -1 on failure, which includes a link on the path and a
/// kernel or sandbox that does not support the call.
int openWithoutLinks(const char *path) {
    open_how how = {};
    how.flags = kFolder;
    how.resolve = RESOLVE_NO_SYMLINKS;
    return static_cast<int>(syscall(SYS_openat2, AT_FDCWD, path, &how, sizeof how));
}

bool isOurs(uid_t owner) {
    return owner == 0 || owner == geteuid();
}

/// Whether @p group is the private group of this process's user: it has the same name and no other
/// member. Distributions give each user such a group and let it write by default.
bool isOwnGroup(gid_t group) {
    const auto found = groupOf(group);
    const auto user = accountOf(geteuid());
    if (!user || !found || user->name != found->name)
        return false;
    return found->members.isEmpty() || found->members == QList{user->name};
}

/// An access control list may let anybody write; the group's write bit then covers all of them.
bool hasAccessList(const Descriptor &folder) {
    const QByteArray path = pathOfDescriptor(folder.number());
    return getxattr(path.constData(), kAccessList, nullptr, 0) >= 0;
}

/// Whether nobody else can replace items in the folder. In a sticky folder everybody can add items,
/// but only owners can replace them.
bool isClosedToOthers(const Descriptor &folder, const struct stat &item) {
    if (!isOurs(item.st_uid))
        return false;
    if (item.st_mode & S_ISVTX)
        return true;
    const bool groupMayWrite = (item.st_mode & S_IWGRP) != 0;
    return !(item.st_mode & S_IWOTH) &&
           (!groupMayWrite || (isOwnGroup(item.st_gid) && !hasAccessList(folder)));
}

/// Follows a path name by name. ".." returns to the folder that the walk came from, even if others
/// have moved the folder that it leaves.
class Walk {
public:
    explicit Walk(const QByteArray &path) { prepend(path); }

    [[nodiscard]] Descriptor run(OSStatus *status) {
        *status = noErr;
        while (*status == noErr && !names_.isEmpty())
            *status = step(names_.takeFirst());
        return *status == noErr ? std::move(way_.back()) : Descriptor();
    }

    /// Whether nobody else can replace, or could have replaced, anything on the path.
    [[nodiscard]] bool isTrusted() const { return isTrusted_; }

private:
    /// Puts the names of a path or a link's target before the remaining ones. A leading "/"
    /// restarts at the root folder.
    void prepend(const QByteArray &path) {
        if (path.startsWith('/'))
            startIn("/");
        else if (way_.empty())
            startIn(".");
        names_ = namesOf(path) + names_;
    }

    void startIn(const char *path) {
        way_.clear();
        way_.emplace_back(open(path, kFolder));
    }

    [[nodiscard]] OSStatus step(const QByteArray &name) {
        if (name == ".." && way_.size() > 1) {
            way_.pop_back();
            return noErr;
        }
        Descriptor next(openat(folder(), name.constData(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
        struct stat item = {};
        if (!next || fstat(next.number(), &item) != 0)
            return statusFromErrno(errno);
        if (S_ISLNK(item.st_mode))
            return isTrusted_ && isOurs(item.st_uid) ? follow(next, name) : foreignLinkErr;
        if (!S_ISDIR(item.st_mode))
            return fnfErr;
        enter(std::move(next), item);
        return noErr;
    }

    void enter(Descriptor folder, const struct stat &item) {
        isTrusted_ = isTrusted_ && isClosedToOthers(folder, item);
        if (!names_.contains(".."))
            way_.clear();
        way_.push_back(std::move(folder));
    }

    [[nodiscard]] OSStatus follow(const Descriptor &link, const QByteArray &name) {
        if (++links_ > kMostLinks)
            return errFSAliasLoop;
        struct statfs system = {};
        if (fstatfs(link.number(), &system) == 0 && system.f_type == PROC_SUPER_MAGIC)
            return followKernelLink(name);
        OSStatus status = noErr;
        const auto text = linkText(link.number(), "", &status);
        if (!text)
            return status;
        prepend(*text);
        return way_.back() ? noErr : statusFromErrno(errno);
    }

    /// A link in /proc refers to an open item, whatever its text says.
    [[nodiscard]] OSStatus followKernelLink(const QByteArray &name) {
        Descriptor next(openat(folder(), name.constData(), kFolder));
        struct stat item = {};
        if (!next || fstat(next.number(), &item) != 0)
            return statusFromErrno(errno);
        way_.clear(); // a later ".." does not return to /proc
        enter(std::move(next), item);
        return noErr;
    }

    [[nodiscard]] int folder() const { return way_.back().number(); }

    /// The current folder, after those to which a later ".." may return. For ".." in a link's
    /// target, the kernel's parent folder is safe: nobody else can move a folder on the path to a
    /// trusted link.
    std::vector<Descriptor> way_;
    QList<QByteArray> names_; ///< not followed yet
    bool isTrusted_ = true;
    int links_ = 0;
};

} // namespace

Descriptor openTrustedFolder(const QByteArray &path, OSStatus *status) {
    *status = noErr;
    const bool mayClimb = path.contains("..");
    if (Descriptor folder(mayClimb ? -1 : openWithoutLinks(path.constData())); folder)
        return folder;
    const QByteArray absolute = absolutePath(path);
    return Walk(absolute.isEmpty() ? path : absolute).run(status);
}

bool isSafeFromOthers(const QByteArray &path) {
    OSStatus status = noErr;
    Walk walk(path);
    (void)walk.run(&status);
    return status != foreignLinkErr && walk.isTrusted();
}

} // namespace MWCore
