// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/MountTable.h"

#include "core/posix/stat_fields.h"
#include "platform/files/RegularFile.h"

#include <algorithm>
#include <cerrno>

#include <QList>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

namespace MWCore {
namespace {

/// Resolves escapes: blanks and the like are written as a backslash and three octal digits.
QByteArray unescaped(const QByteArray &text) {
    QByteArray plain;
    for (qsizetype at = 0; at < text.size(); ++at) {
        bool isNumber = false;
        const uint code = text[at] == '\\' ? text.mid(at + 1, 3).toUInt(&isNumber, 8) : 0;
        plain += isNumber ? static_cast<char>(code) : text[at];
        at += isNumber ? 3 : 0;
    }
    return plain;
}

std::optional<Mount> parseLine(const QByteArray &line) {
    const QList<QByteArray> fields = line.split(' ');
    // 36 35 98:0 /root /point options [optional fields] - type source options
    constexpr qsizetype kFirstOptional = 6;
    const qsizetype separator = fields.indexOf("-", kFirstOptional);
    if (separator < 0 || separator + 2 >= fields.size())
        return std::nullopt;
    const QList<QByteArray> device = fields[2].split(':');
    Mount mount;
    bool hasId = false;
    mount.id = fields[0].toInt(&hasId);
    mount.parent = fields[1].toInt();
    if (!hasId || device.size() != 2)
        return std::nullopt;
    mount.device = makedev(device[0].toUInt(), device[1].toUInt());
    mount.root = unescaped(fields[3]);
    mount.mountPoint = unescaped(fields[4]);
    mount.type = fields[separator + 1];
    mount.source = unescaped(fields[separator + 2]);
    return mount;
}

/// The mount of "/". The kernel does not list it for a process whose root was changed to a folder
/// within that mount. nullopt if it cannot be found.
std::optional<Mount> rootMount() {
    struct statx root = {};
    if (statx(AT_FDCWD, "/", 0, STATX_MNT_ID, &root) != 0)
        return std::nullopt;
    Mount mount;
    mount.id = static_cast<int32_t>(root.stx_mnt_id);
    mount.device = deviceOf(root);
    mount.mountPoint = "/";
    return mount;
}

} // namespace

std::vector<Mount> parseMountTable(QByteArrayView mountInfo) {
    std::vector<Mount> mounts;
    for (const QByteArray &line : mountInfo.toByteArray().split('\n'))
        if (auto mount = parseLine(line))
            mounts.push_back(std::move(*mount));
    return mounts;
}

std::vector<Mount> mountTable() {
    const Descriptor file(open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC));
    constexpr int64_t kLongest = 16 << 20;
    OSStatus status = noErr;
    const auto text = file ? readAt(file.number(), 0, kLongest, &status) : std::nullopt;
    std::vector<Mount> mounts = text ? parseMountTable(*text) : std::vector<Mount>();
    if (std::ranges::find(mounts, "/", &Mount::mountPoint) == mounts.end())
        if (auto root = rootMount())
            mounts.insert(mounts.begin(), std::move(*root));
    return mounts;
}

uint64_t mountIdOf(int folder, const char *path) {
    struct statx item = {};
    constexpr int kFlags = AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT | AT_EMPTY_PATH;
    if (statx(folder, path, kFlags | AT_STATX_DONT_SYNC, STATX_MNT_ID, &item) != 0) {
        struct stat known = {}; // some sandboxes refuse the newer call
        const bool isRefused = errno == ENOSYS || errno == EPERM;
        return isRefused && fstatat(folder, path, &known, kFlags) == 0 ? known.st_dev : 0;
    }
    return item.stx_mask & STATX_MNT_ID ? item.stx_mnt_id : deviceOf(item);
}

bool isOnMount(int descriptor, const Mount &mount) {
    struct statx item = {};
    if (statx(descriptor, "", AT_EMPTY_PATH | AT_STATX_DONT_SYNC, STATX_MNT_ID, &item) != 0)
        return false;
    return item.stx_mask & STATX_MNT_ID ? item.stx_mnt_id == static_cast<uint64_t>(mount.id)
                                        : deviceOf(item) == mount.device;
}

bool isAtOrBelow(const QByteArray &path, const QByteArray &folder) {
    if (folder.endsWith('/'))
        return path.startsWith(folder);
    return path.startsWith(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

std::vector<const Mount *> mountsAlongPath(const QByteArray &path,
                                           const std::vector<Mount> &mounts) {
    std::vector<const Mount *> holding;
    for (const Mount &mount : mounts)
        if (isAtOrBelow(path, mount.mountPoint))
            holding.push_back(&mount);
    const auto isListed = [&holding](const Mount *child) {
        return std::ranges::any_of(holding, [child](const Mount *mount) {
            return mount != child && mount->id == child->parent;
        });
    };
    // A mount on the root of another mount comes before the mounts deeper in it.
    std::vector<const Mount *> way;
    for (;;) {
        const Mount *next = nullptr;
        for (const Mount *const mount : holding) {
            const bool follows = way.empty()
                                     ? !isListed(mount)
                                     : mount->parent == way.back()->id && mount != way.back();
            if (follows && (!next || mount->mountPoint.size() <= next->mountPoint.size()))
                next = mount;
        }
        if (!next || way.size() > holding.size())
            return way;
        way.push_back(next);
    }
}

const Mount *mountOf(const QByteArray &path, const std::vector<Mount> &mounts) {
    const auto way = mountsAlongPath(path, mounts);
    return way.empty() ? nullptr : way.back();
}

} // namespace MWCore
