// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/references/AliasResolution.h"

#include "core/posix/Descriptor.h"
#include "platform/files/DescriptorPath.h"
#include "platform/files/ItemIdentity.h"
#include "platform/files/PathParts.h"
#include "platform/files/RegularFile.h"
#include "platform/files/UserAccount.h"
#include "platform/references/InodeSearch.h"
#include "platform/references/MountGuard.h"
#include "platform/references/RecordedFileSystem.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace MWCore {
namespace {

/// The path of @p inside, with or without a leading "/", below @p folder.
QByteArray below(const QByteArray &folder, const QByteArray &inside) {
    const QByteArray rest = inside.startsWith('/') ? inside.sliced(1) : inside;
    return rest.isEmpty() ? folder : pathIn(folder, rest);
}

/// Opens the folder to work relative to it, without the right to read its names.
Descriptor locateFolderAt(int folder, const char *name) {
    return Descriptor(openat(folder, name, O_PATH | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC));
}

Descriptor openNamesOf(const Descriptor &folder) {
    return openFolderAt(folder.number(), ".", FinalLink::Keep);
}

/// An open folder and its path.
struct OpenFolder {
    Descriptor folder;
    QByteArray path; ///< without links
};

/// One search, step by step. A step returns the item, or nullopt to let the next step try.
class Resolution {
public:
    Resolution(const AliasRecord &record, Replacement replacement, ResolutionContext &context)
        : record_(record), replacement_(replacement), context_(context),
          guard_(context.mounts, context.budget) {
        if (context.ownMount)
            guard_.allow(*context.ownMount);
        if (context.remoteAccess == RemoteAccess::Recorded)
            allowRecorded(record, guard_);
    }

    [[nodiscard]] std::optional<FSRef> run() {
        for (const auto step :
             {&Resolution::asStored, &Resolution::onMovedVolume, &Resolution::byHandle,
              &Resolution::amongSiblings, &Resolution::inPlace, &Resolution::anywhere}) {
            auto item = (this->*step)();
            if (item || context_.budget.hasStopped())
                return item;
        }
        return std::nullopt;
    }

    [[nodiscard]] OSStatus status() const {
        if (context_.budget.status() != noErr)
            return context_.budget.status();
        // The item may be on a file system that was not touched.
        if (storedStatus_ == fileBoundsErr && context_.remoteAccess == RemoteAccess::None)
            return fileBoundsErr;
        return storedStatus_ == permErr && !isDead_ ? permErr : fnfErr;
    }

private:
    /// The item at @p path if it is the one wanted.
    [[nodiscard]] std::optional<FSRef> ifWanted(const QByteArray &path) {
        auto item = whateverIsAt(path);
        return item && isSameItem(item->identity, record_.identity) ? item : std::nullopt;
    }

    [[nodiscard]] std::optional<FSRef> whateverIsAt(const QByteArray &path) {
        const bool isHasty = context_.remoteAccess == RemoteAccess::None;
        QByteArray real;
        const Descriptor item =
            guard_.open(path, FinalLink::Keep, &lastStatus_, isHasty ? &real : nullptr);
        OSStatus status = noErr;
        auto identity = item ? identityOf(item.number(), "", &status) : std::nullopt;
        return identity ? std::optional(FSRef{isHasty ? real : path, std::move(*identity)})
                        : std::nullopt;
    }

    [[nodiscard]] std::optional<FSRef> asStored() {
        stored_ = whateverIsAt(record_.path);
        storedStatus_ = lastStatus_;
        return stored_ && isSameItem(stored_->identity, record_.identity) ? stored_ : std::nullopt;
    }

    /// Where the item's file system is mounted, the mount at the stored path first; empty if it is
    /// not mounted.
    [[nodiscard]] const std::vector<const Mount *> &places() {
        if (!places_)
            places_ = mountsOfRecorded(record_, guard_);
        return *places_;
    }

    /// The same path on the item's file system, which may be mounted elsewhere now.
    [[nodiscard]] std::optional<FSRef> onMovedVolume() {
        const QList<QByteArray> names = namesBelowMountPoint(record_);
        for (const Mount *const mount : places())
            if (auto item = ifWanted(below(mount->mountPoint, names.join('/'))))
                return item;
        return std::nullopt;
    }

    /// Asks the kernel, which answers only the superuser. The kernel may find the item but not its
    /// path, or a path that only one of the mounts contains.
    [[nodiscard]] std::optional<FSRef> byHandle() {
        if (record_.identity.handle.isEmpty())
            return std::nullopt;
        for (const Mount *const mount : places()) {
            const Descriptor folder =
                openFolderAt(AT_FDCWD, mount->mountPoint.constData(), FinalLink::Follow);
            const Descriptor item = folder ? openedByHandle(folder.number()) : Descriptor();
            const QByteArray path = item ? realPathOfDescriptor(item.number()) : QByteArray();
            auto found = path.isEmpty() ? std::nullopt : ifWanted(path);
            if (found || isDead_)
                return found;
        }
        return std::nullopt;
    }

    [[nodiscard]] Descriptor openedByHandle(int folder) {
        OSStatus status = noErr;
        Descriptor item = openByHandle(folder, record_.identity, &status);
        struct stat now = {};
        isDead_ = item ? fstat(item.number(), &now) == 0 && now.st_nlink == 0 : status == fnfErr;
        return item;
    }

    /// Searches the item's folder, which is found even if it was renamed.
    [[nodiscard]] std::optional<FSRef> amongSiblings() {
        if (isDead_ || places().empty())
            return std::nullopt;
        const auto parent = currentParent(*places().front());
        const Descriptor names = parent ? openNamesOf(parent->folder) : Descriptor();
        if (!names)
            return std::nullopt;
        const auto name = search(record_.identity).inFolder(names.number(), parent->path);
        return name ? ifWanted(pathIn(parent->path, *name)) : std::nullopt;
    }

    /// Opens the stored parent folder. Each folder on the path from the mount point is searched by
    /// its old name and, failing that, by its inode number among its siblings.
    [[nodiscard]] std::optional<OpenFolder> currentParent(const Mount &mount) {
        const QList<QByteArray> names = namesBelowMountPoint(record_);
        const QByteArray place = record_.realPath.first(record_.mountPointLength);
        const std::size_t top = nameCount(place);
        OpenFolder at = {locateFolderAt(AT_FDCWD, mount.mountPoint.constData()), mount.mountPoint};
        if (names.isEmpty())
            return std::nullopt;
        for (qsizetype depth = 0; depth + 1 < names.size() && at.folder; ++depth) {
            const auto level = top + static_cast<std::size_t>(depth) + 1;
            if (!context_.budget.mayStep())
                return std::nullopt;
            at = level < record_.ancestors.size()
                     ? child(at, names[depth], record_.ancestors[level])
                     : namedChild(at, names[depth]);
        }
        return at.folder ? std::optional(std::move(at)) : std::nullopt;
    }

    /// Does not touch what is mounted there.
    [[nodiscard]] OpenFolder namedChild(const OpenFolder &parent, const QByteArray &name) const {
        QByteArray path = pathIn(parent.path, name);
        if (guard_.isMountPoint(path))
            return {};
        return {locateFolderAt(parent.folder.number(), name.constData()), std::move(path)};
    }

    [[nodiscard]] OpenFolder child(const OpenFolder &parent, const QByteArray &name,
                                   uint64_t inode) {
        struct stat item = {};
        OpenFolder named = namedChild(parent, name);
        if (named.folder && fstat(named.folder.number(), &item) == 0 && item.st_ino == inode)
            return named;
        FileIdentity wanted;
        wanted.inode = inode;
        const Descriptor names = openNamesOf(parent.folder);
        const auto renamed =
            names ? search(wanted).subfolderOf(names.number(), parent.path) : std::nullopt;
        return renamed ? namedChild(parent, *renamed) : OpenFolder();
    }

    [[nodiscard]] InodeSearch search(const FileIdentity &wanted) {
        return {wanted, guard_.mounts(), context_.budget};
    }

    /// Does not apply if some names could not be read, because the item may be among them.
    [[nodiscard]] std::optional<FSRef> inPlace() {
        return replacement_ == Replacement::Accept && context_.budget.status() == noErr
                   ? stored_
                   : std::nullopt;
    }

    [[nodiscard]] std::optional<FSRef> anywhere() {
        if (isDead_ || places().empty())
            return std::nullopt;
        const QByteArray path = searchedFolder(*places().front());
        const Descriptor names = openFolderAt(AT_FDCWD, path.constData(), FinalLink::Keep);
        const bool isThere = names && isOnMount(names.number(), *places().front());
        const auto found =
            isThere ? search(record_.identity).below(names.number(), path) : std::nullopt;
        return found ? ifWanted(*found) : std::nullopt;
    }

    /// The home folder if the item was in it and it is on @p mount; otherwise the whole mount.
    [[nodiscard]] QByteArray searchedFolder(const Mount &mount) {
        const QByteArray home = homeFolder();
        const bool wasInHome = !home.isEmpty() && isAtOrBelow(record_.realPath, home);
        return wasInHome && mountOf(home, guard_.mounts()) == &mount ? home : mount.mountPoint;
    }

    /// Without links; empty if it cannot be found.
    [[nodiscard]] QByteArray homeFolder() {
        const char *const given = std::getenv("HOME");
        QByteArray home = given;
        if (!home.startsWith('/'))
            home = accountOf(getuid()).value_or(UserAccount()).homeFolder;
        QByteArray real;
        OSStatus status = noErr;
        const Descriptor opened = home.startsWith('/')
                                      ? guard_.open(home, FinalLink::Follow, &status, &real)
                                      : Descriptor();
        return opened ? real : QByteArray();
    }

    const AliasRecord &record_;
    Replacement replacement_;
    ResolutionContext &context_;
    MountGuard guard_;
    std::optional<std::vector<const Mount *>> places_; ///< found on first use
    std::optional<FSRef> stored_;                      ///< the item at the stored path
    OSStatus storedStatus_ = noErr;                    ///< of the look there
    OSStatus lastStatus_ = noErr;
    bool isDead_ = false; ///< the kernel reports that the item no longer exists
};

} // namespace

std::optional<FSRef> locate(const AliasRecord &record, Replacement replacement,
                            ResolutionContext &context, OSStatus *status) {
    Resolution resolution(record, replacement, context);
    auto item = resolution.run();
    *status = item ? noErr : resolution.status();
    return item;
}

std::optional<FSRef> locate(const AliasRecord &record, Replacement replacement,
                            const SearchLimits &limits, OSStatus *status) {
    MountSnapshot mounts;
    ResolutionContext context(limits, mounts);
    return locate(record, replacement, context, status);
}

} // namespace MWCore
