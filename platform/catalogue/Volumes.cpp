// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/catalogue/Volumes.h"

#include "core/posix/Descriptor.h"
#include "core/posix/FolderStream.h"
#include "platform/files/MountTable.h"
#include "platform/files/PathParts.h"
#include "platform/files/RegularFile.h"
#include "platform/foundation/FileSystemText.h"

#include <algorithm>
#include <cerrno>
#include <memory>

#include <QSysInfo>

#include <dirent.h>
#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/statvfs.h>

namespace MWCore {
namespace {

/// The label that the file system itself reports; empty if it reports none.
QByteArray labelFromFileSystem(const Mount &mount) {
    const Descriptor folder =
        openFolderAt(AT_FDCWD, mount.mountPoint.constData(), FinalLink::Follow);
    char label[FSLABEL_MAX + 1] = {};
    if (!folder || ioctl(folder.number(), FS_IOC_GETFSLABEL, label) != 0)
        return {};
    return label;
}

/// Resolves udev's escapes: \xNN for each byte that is not allowed in a name.
QByteArray unescapedLabel(const QByteArray &name) {
    QByteArray label;
    for (qsizetype at = 0; at < name.size(); ++at) {
        bool isNumber = false;
        const uint code = name.mid(at, 2) == "\\x" ? name.mid(at + 2, 2).toUInt(&isNumber, 16) : 0;
        label += isNumber ? static_cast<char>(code) : name[at];
        at += isNumber ? 3 : 0;
    }
    return label;
}

/// The label under which udev lists the mounted device.
QByteArray labelFromDevices(const Mount &mount) {
    struct stat device = {};
    if (!mount.source.startsWith('/') || stat(mount.source.constData(), &device) != 0)
        return {};
    const FolderStream labels(opendir("/dev/disk/by-label"));
    while (const dirent *const entry = labels ? readdir(labels.get()) : nullptr) {
        struct stat labelled = {};
        if (fstatat(dirfd(labels.get()), entry->d_name, &labelled, 0) == 0 &&
            S_ISBLK(labelled.st_mode) && labelled.st_rdev == device.st_rdev)
            return unescapedLabel(entry->d_name);
    }
    return {};
}

QString nameOf(const Mount &mount) {
    QByteArray name = labelFromFileSystem(mount);
    if (name.isEmpty())
        name = labelFromDevices(mount);
    if (name.isEmpty())
        name = PathParts(mount.mountPoint).name;
    if (!name.isEmpty())
        return stringWithFileSystemRepresentation(name);
    const QString host = QSysInfo::machineHostName();
    return host.isEmpty() ? QString("/") : host;
}

} // namespace

OSStatus FSGetVolumeInfo(FSVolumeRefNum volume, FSVolumeInfoBitmap whichInfo, FSVolumeInfo *info,
                         QString *volumeName) {
    const std::vector<Mount> mounts = mountTable();
    const auto mount = std::ranges::find(mounts, volume, &Mount::id);
    if (mount == mounts.end())
        return nsvErr;
    if (volumeName)
        *volumeName = nameOf(*mount);
    if (!info || whichInfo == kFSVolInfoNone)
        return noErr;
    struct statvfs system = {};
    if (statvfs(mount->mountPoint.constData(), &system) != 0)
        return statusFromErrno(errno);
    if (whichInfo & kFSVolInfoFileCount)
        info->fileCount = system.f_files - system.f_ffree;
    if (whichInfo & kFSVolInfoDirCount)
        info->folderCount = 0;
    if (whichInfo & kFSVolInfoSizes) {
        info->totalBytes = uint64_t(system.f_blocks) * system.f_frsize;
        info->freeBytes = uint64_t(system.f_bavail) * system.f_frsize;
    }
    return noErr;
}

} // namespace MWCore
