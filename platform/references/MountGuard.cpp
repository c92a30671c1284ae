// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/references/MountGuard.h"

#include "platform/files/DescriptorPath.h"
#include "platform/files/FileSystemTypes.h"
#include "platform/files/PathParts.h"

#include <algorithm>
#include <cerrno>
#include <utility>

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace MWCore {
namespace {

constexpr OSStatus kOutOfReach = fileBoundsErr;
constexpr OSStatus kNoSuchCall = errFSOperationNotSupported;

/// The outcome of the open(2) call that has just returned; EXDEV means that the path crosses into
/// another mount.
OSStatus statusOf(const Descriptor &opened) {
    if (opened)
        return noErr;
    return errno == EXDEV ? kOutOfReach : statusFromErrno(errno);
}

int flagsFor(FinalLink link) {
    return O_PATH | O_CLOEXEC | (link == FinalLink::Keep ? O_NOFOLLOW : 0);
}

/// Opens @p path unless it crosses into another mount: EXDEV. ENOSYS if the kernel (before 5.6) or
/// a sandbox does not support the call.
Descriptor openOnOneMount(int folder, const QByteArray &path, FinalLink link) {
    open_how how = {};
    how.flags = static_cast<uint64_t>(flagsFor(link));
    how.resolve = RESOLVE_NO_XDEV;
    const long opened = syscall(SYS_openat2, folder, path.constData(), &how, sizeof how);
    if (opened < 0 && errno == EPERM)
        errno = ENOSYS;
    return Descriptor(static_cast<int>(opened));
}

} // namespace

/// Follows a path name by name and compares each with the mount points before touching it.
class MountGuard::Walk {
public:
    Walk(const MountGuard &guard, SearchBudget &budget, QByteArray path, FinalLink link)
        : guard_(guard), budget_(budget), path_(std::move(path)), link_(link) {}

    [[nodiscard]] Descriptor run(OSStatus *status) {
        *status = noErr;
        beginAtTop();
        while (*status == noErr && at_ < path_.size())
            *status = step();
        if (*status == noErr && path_.endsWith('/'))
            *status = stay();
        return *status == noErr ? std::move(item_) : Descriptor();
    }

    /// The path that was followed, without links; ends at a mount point that may not be touched.
    [[nodiscard]] const QByteArray &realPath() const { return realPath_; }

private:
    void beginAtTop() {
        realPath_ = "/";
        item_ = Descriptor(::open("/", O_PATH | O_DIRECTORY | O_CLOEXEC));
    }

    [[nodiscard]] QByteArray takeName() {
        const qsizetype slash = path_.indexOf('/', at_);
        QByteArray name = path_.sliced(at_, (slash < 0 ? path_.size() : slash) - at_);
        isLast_ = slash < 0;
        at_ = isLast_ ? path_.size() : slash + 1;
        return name;
    }

    [[nodiscard]] OSStatus step() {
        const QByteArray name = takeName();
        if (name.isEmpty() || name == ".")
            return stay();
        const QByteArray next =
            name == ".." ? PathParts(realPath_).parent : pathIn(realPath_, name);
        if (!budget_.mayStep())
            return kOutOfReach;
        if (!mayEnter(next))
            return stopAt(next);
        constexpr int kFlags = O_PATH | O_NOFOLLOW | O_CLOEXEC;
        Descriptor found(openat(item_.number(), name.constData(), kFlags));
        if (!found)
            return statusOf(found);
        if (isLast_ && link_ == FinalLink::Keep)
            return enter(std::move(found), next);
        const auto target = linkText(found.number(), "");
        return target ? follow(*target) : enter(std::move(found), next);
    }

    [[nodiscard]] bool mayEnter(const QByteArray &next) const {
        return !guard_.isMountPoint(next) ||
               guard_.isWayOpen(mountsAlongPath(next, guard_.mounts()));
    }

    /// Succeeds only in a folder, like a path that ends in "/".
    [[nodiscard]] OSStatus stay() const {
        return statusOf(Descriptor(openat(item_.number(), ".", O_PATH | O_CLOEXEC)));
    }

    [[nodiscard]] OSStatus enter(Descriptor found, const QByteArray &next) {
        item_ = std::move(found);
        realPath_ = next;
        return noErr;
    }

    [[nodiscard]] OSStatus stopAt(const QByteArray &mountPoint) {
        realPath_ = mountPoint;
        return kOutOfReach;
    }

    [[nodiscard]] OSStatus follow(const QByteArray &text) {
        if (++links_ > kMostLinks)
            return errFSAliasLoop;
        path_ = isLast_ ? text : text + '/' + path_.sliced(at_);
        at_ = 0;
        if (text.startsWith('/'))
            beginAtTop();
        return noErr;
    }

    const MountGuard &guard_;
    SearchBudget &budget_;
    QByteArray path_;  ///< links are replaced by their targets when followed
    qsizetype at_ = 0; ///< how far path_ was followed
    FinalLink link_;
    Descriptor item_;
    QByteArray realPath_; ///< of the item, or where the walk stopped
    bool isLast_ = false;
    int links_ = 0;
};

bool MountGuard::mayTouch(const Mount &mount) const {
    return allowsAll_ || mount.mountPoint == "/" || isLocalFileSystem(mount.type) ||
           std::ranges::find(allowed_, mount.id) != allowed_.end();
}

bool MountGuard::isWayOpen(const std::vector<const Mount *> &way) const {
    return std::ranges::all_of(way, [this](const Mount *mount) { return mayTouch(*mount); });
}

bool MountGuard::isReachable(const Mount &mount) const {
    const auto way = mountsAlongPath(mount.mountPoint, mounts());
    return !way.empty() && way.back()->id == mount.id && isWayOpen(way);
}

bool MountGuard::isMountPoint(const QByteArray &path) const {
    return std::ranges::find(mounts(), path, &Mount::mountPoint) != mounts().end();
}

Descriptor MountGuard::openWithin(const QByteArray &path, FinalLink link, OSStatus *status) {
    // Most items are on the mount of "/" and need no mount table.
    Descriptor item = openOnOneMount(AT_FDCWD, path, link);
    *status = statusOf(item);
    if (*status != kOutOfReach)
        return item;
    const auto way = mountsAlongPath(path, mounts());
    if (way.size() < 2 || !isWayOpen(way))
        return {};
    const QByteArray &mountPoint = way.back()->mountPoint;
    const Descriptor top(::open(mountPoint.constData(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
    const QByteArray inside = path.sliced(std::min(path.size(), mountPoint.size() + 1));
    item = openOnOneMount(top.number(), inside.isEmpty() ? "." : inside, link);
    *status = statusOf(item);
    return item;
}

Descriptor MountGuard::open(const QByteArray &path, FinalLink link, OSStatus *status,
                            QByteArray *realPath) {
    Descriptor item;
    *status = budget_.mayStep() ? noErr : kOutOfReach;
    if (*status != noErr)
        return item;
    if (allowsAll_) {
        item = Descriptor(::open(path.constData(), flagsFor(link)));
        *status = statusOf(item);
    } else {
        item = openWithin(path, link, status);
    }
    const QByteArray known = item && realPath ? realPathOfDescriptor(item.number()) : QByteArray();
    const bool isUnknown = item && realPath && known.isEmpty();
    if (*status != kOutOfReach && *status != kNoSuchCall && !isUnknown) {
        if (realPath)
            *realPath = known;
        return item;
    }
    Walk walk(*this, budget_, path, link);
    item = walk.run(status);
    if (realPath)
        *realPath = walk.realPath();
    return item;
}

} // namespace MWCore
