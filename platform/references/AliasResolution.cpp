// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/references/AliasResolution.h"

#include "core/private/Descriptor.h"
#include "platform/files/ItemIdentity.h"
#include "platform/files/MountTable.h"
#include "platform/files/PathParts.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <memory>

#include <QList>

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <sys/vfs.h>

namespace MWCore {
QByteArray withoutLinks(const QByteArray &path) {
    const std::unique_ptr<char, decltype(&std::free)> real(realpath(path.constData(), nullptr),
                                                           &std::free);
    return real.get();
}

namespace {

/// @p inside, with or without "/" before it, below @p folder.
QByteArray below(const QByteArray &folder, const QByteArray &inside) {
    const QByteArray rest = inside.startsWith('/') ? inside.sliced(1) : inside;
    return rest.isEmpty() ? folder : pathIn(folder, rest);
}

/// @p path without links in its folders; as it is where that cannot be told.
QByteArray realPathOf(const QByteArray &path) {
    const PathParts parts(path);
    const QByteArray folder = withoutLinks(parts.parent);
    if (folder.isEmpty() || parts.name.isEmpty() || parts.name == "." || parts.name == "..")
        return path;
    return below(folder, parts.name);
}

/// The file system that the item itself is on, without opening it; 0 when it does not tell.
uint64_t fileSystemOf(const QByteArray &path) {
    const Descriptor item(open(path.constData(), O_PATH | O_NOFOLLOW | O_CLOEXEC));
    struct statfs system = {};
    static_assert(sizeof system.f_fsid == sizeof(uint64_t));
    uint64_t number = 0;
    if (item && fstatfs(item.number(), &system) == 0)
        memcpy(&number, &system.f_fsid, sizeof number);
    return number;
}

/// The names on the way from "/" to a path's last one.
QList<QByteArray> namesOf(const QByteArray &path) {
    QList<QByteArray> names = path.split('/');
    names.removeAll({});
    return names;
}

std::vector<uint64_t> ancestorsOf(const QByteArray &realPath) {
    std::vector<uint64_t> inodes;
    QByteArray folder = "/";
    for (const QByteArray &name : namesOf(realPath)) {
        struct stat item = {};
        if (stat(folder.constData(), &item) != 0)
            break;
        inodes.push_back(item.st_ino);
        folder = below(folder, name);
    }
    return inodes;
}

/// What is found out step by step; a step gives a path, or nothing and lets the next one try.
class Resolution {
public:
    Resolution(const AliasRecord &record, Replacement replacement, const SearchLimits &limits)
        : record_(record), replacement_(replacement), limits_(limits),
          search_(record.identity, limits) {}

    [[nodiscard]] std::optional<QByteArray> run() {
        if (leadsToIt(record_.path))
            return record_.path;
        mounts_ = mountTable();
        for (const auto step :
             {&Resolution::onMovedVolume, &Resolution::byHandle, &Resolution::amongSiblings,
              &Resolution::inPlace, &Resolution::anywhere}) {
            auto path = (this->*step)();
            if (path || search_.status() != noErr)
                return path;
        }
        return std::nullopt;
    }

    [[nodiscard]] OSStatus status() const {
        struct stat item = {};
        const bool isClosed =
            lstat(record_.path.constData(), &item) != 0 && errno == EACCES && !isDead_;
        if (search_.status() != noErr)
            return search_.status();
        if (search_.readFailure() != noErr)
            return search_.readFailure();
        return isClosed ? permErr : fnfErr;
    }

private:
    [[nodiscard]] bool leadsToIt(const QByteArray &path) const {
        OSStatus status = noErr;
        const auto identity = identityOf(AT_FDCWD, path.constData(), &status);
        return identity && isSameItem(*identity, record_.identity);
    }

    /// The same place on the same file system, which is mounted elsewhere now.
    [[nodiscard]] std::optional<QByteArray> onMovedVolume() {
        const QByteArray inside = record_.realPath.sliced(record_.mountPointLength);
        for (const Mount *const mount : mountsOfFileSystem())
            if (QByteArray path = below(mount->mountPoint, inside); leadsToIt(path))
                return path;
        return std::nullopt;
    }

    /// Asks the kernel, which answers the superuser alone. It may know the item and not its name,
    /// or a name that one mount shows and another does not.
    [[nodiscard]] std::optional<QByteArray> byHandle() {
        if (record_.identity.handle.isEmpty())
            return std::nullopt;
        for (const Mount *const mount : mountsOfFileSystem()) {
            const Descriptor folder(
                open(mount->mountPoint.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
            const Descriptor item = folder ? openedByHandle(folder.number()) : Descriptor();
            const QByteArray path = item ? pathOf(item.number()) : QByteArray();
            if (path.startsWith('/') && leadsToIt(path))
                return path;
            if (isDead_)
                break;
        }
        return std::nullopt;
    }

    /// Of an open item, as the kernel knows it; anything where it does not.
    [[nodiscard]] static QByteArray pathOf(int descriptor) {
        char buffer[PATH_MAX];
        const QByteArray link = "/proc/self/fd/" + QByteArray::number(descriptor);
        const ssize_t length = readlink(link.constData(), buffer, sizeof buffer);
        return {buffer, std::max<ssize_t>(length, 0)};
    }

    [[nodiscard]] Descriptor openedByHandle(int folder) {
        const FileIdentity &identity = record_.identity;
        if (identity.handle.size() > MAX_HANDLE_SZ)
            return {};
        union {
            file_handle header;
            char room[sizeof(file_handle) + MAX_HANDLE_SZ];
        } handle = {};
        handle.header.handle_bytes = static_cast<unsigned>(identity.handle.size());
        handle.header.handle_type = identity.handleType;
        memcpy(handle.room + sizeof(file_handle), identity.handle.constData(),
               handle.header.handle_bytes);
        Descriptor item(open_by_handle_at(folder, &handle.header, O_PATH | O_CLOEXEC));
        struct stat now = {};
        isDead_ = item ? fstat(item.number(), &now) == 0 && now.st_nlink == 0 : errno == ESTALE;
        return item;
    }

    /// Where the item's file system is mounted, its usual place first; none where that is not
    /// certain. Only local file systems are asked; one on the network could keep silent for ever.
    [[nodiscard]] std::vector<const Mount *> mountsOfFileSystem() const {
        std::vector<const Mount *> found;
        if (record_.fileSystem == 0)
            return found;
        const Mount *const usual = mountOf(record_.realPath, mounts_);
        if (usual && fileSystemOf(deepestFolder()) == record_.fileSystem)
            found.push_back(usual);
        for (const Mount &mount : mounts_) {
            const bool isCandidate =
                mount.device == record_.identity.device || mount.source.startsWith("/dev/");
            if (isCandidate && &mount != usual &&
                fileSystemOf(mount.mountPoint) == record_.fileSystem)
                found.push_back(&mount);
        }
        return found;
    }

    /// The deepest folder on the stored way that is there; a subvolume has an id of its own.
    [[nodiscard]] QByteArray deepestFolder() const {
        struct stat item = {};
        QByteArray folder = record_.realPath;
        while (folder.size() > 1 && lstat(folder.constData(), &item) != 0)
            folder = PathParts(folder).parent;
        return folder;
    }

    /// The names in the item's folder, which itself is followed through renames.
    [[nodiscard]] std::optional<QByteArray> amongSiblings() {
        const QByteArray folder = currentParent();
        return folder.isEmpty() || isDead_ ? std::nullopt : search_.inFolder(folder);
    }

    /// The stored parent folder, where each folder on the way is looked for under its old name
    /// and, failing that, by its inode number among its siblings. Empty when it cannot be found.
    [[nodiscard]] QByteArray currentParent() {
        const QList<QByteArray> names = namesOf(record_.realPath);
        QByteArray folder = "/";
        for (qsizetype depth = 0; depth + 1 < names.size() && !folder.isEmpty(); ++depth) {
            const auto next = static_cast<std::size_t>(depth) + 1;
            const QByteArray named = below(folder, names[depth]);
            folder = next >= record_.ancestors.size()
                         ? named
                         : child(folder, named, record_.ancestors[next]);
        }
        return folder;
    }

    [[nodiscard]] QByteArray child(const QByteArray &folder, const QByteArray &named,
                                   uint64_t inode) const {
        struct stat item = {};
        if (lstat(named.constData(), &item) == 0 && item.st_ino == inode)
            return named;
        FileIdentity wanted;
        wanted.inode = inode;
        return InodeSearch(wanted, limits_).inFolder(folder).value_or(QByteArray());
    }

    [[nodiscard]] std::optional<QByteArray> inPlace() {
        struct stat item = {};
        const bool isThere = lstat(record_.path.constData(), &item) == 0;
        return isThere && replacement_ == Replacement::IsTheItem ? std::optional(record_.path)
                                                                 : std::nullopt;
    }

    [[nodiscard]] std::optional<QByteArray> anywhere() {
        return isDead_ ? std::nullopt : search_.below(searchedFolder());
    }

    /// The home folder, where the item was in it; else, or if that is less, the whole volume,
    /// wherever it is mounted now.
    [[nodiscard]] QByteArray searchedFolder() const {
        const auto known = mountsOfFileSystem();
        const Mount *const mount =
            known.empty() ? mountOf(record_.realPath, mounts_) : known.front();
        const QByteArray volume = mount ? mount->mountPoint : QByteArray("/");
        const QByteArray home = homeFolder();
        return isAtOrBelow(record_.realPath, home) && isAtOrBelow(home, volume) ? home : volume;
    }

    [[nodiscard]] static QByteArray homeFolder() {
        const char *const given = std::getenv("HOME");
        char texts[4096];
        passwd entry = {};
        passwd *user = nullptr;
        if (!given || *given != '/')
            getpwuid_r(getuid(), &entry, texts, sizeof texts, &user);
        const QByteArray home = user ? user->pw_dir : given;
        const QByteArray real = home.startsWith('/') ? withoutLinks(home) : QByteArray();
        return real.isEmpty() ? QByteArray("/") : real;
    }

    const AliasRecord &record_;
    Replacement replacement_;
    const SearchLimits &limits_;
    InodeSearch search_;
    std::vector<Mount> mounts_;
    bool isDead_ = false; ///< the kernel says that the item exists no more
};

} // namespace

std::optional<AliasRecord> aliasRecordOf(const QByteArray &path, OSStatus *status) {
    const auto identity = identityOf(AT_FDCWD, path.constData(), status);
    if (!identity)
        return std::nullopt;
    AliasRecord record;
    record.path = path;
    record.realPath = realPathOf(path);
    record.identity = *identity;
    record.fileSystem = fileSystemOf(record.realPath);
    const std::vector<Mount> mounts = mountTable();
    const Mount *const mount = mountOf(record.realPath, mounts);
    record.mountPointLength = mount ? static_cast<uint32_t>(mount->mountPoint.size()) : 0;
    record.ancestors = ancestorsOf(record.realPath);
    return record;
}

AliasRecord recordOf(const FSRef &ref) {
    AliasRecord record;
    record.path = ref.path;
    record.realPath = realPathOf(ref.path);
    record.identity = ref.identity;
    // The item may be gone from there, but its folder is on the same file system.
    const QByteArray folder = PathParts(record.realPath).parent;
    struct stat item = {};
    if (stat(folder.constData(), &item) == 0 && item.st_dev == ref.identity.device)
        record.fileSystem = fileSystemOf(folder);
    return record;
}

std::optional<QByteArray> locate(const AliasRecord &record, Replacement replacement,
                                 const SearchLimits &limits, OSStatus *status) {
    Resolution resolution(record, replacement, limits);
    auto path = resolution.run();
    *status = path ? noErr : resolution.status();
    return path;
}

} // namespace MWCore
