// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mwcore_export.h>
#include <MWCore/OSStatus.h>

#include <cstdint>

#include <QFlags>
#include <QString>

namespace MWCore {

/// Number of a mounted file system: its mount id (proc_pid_mountinfo(5)).
using FSVolumeRefNum = int32_t;

/// The fields that FSGetVolumeInfo() is to fill.
enum FSVolumeInfoBit : uint32_t {
    kFSVolInfoNone = 0,
    kFSVolInfoFileCount = 0x10,
    kFSVolInfoDirCount = 0x20,
    kFSVolInfoSizes = 0x40,
};
Q_DECLARE_FLAGS(FSVolumeInfoBitmap, FSVolumeInfoBit)
Q_DECLARE_OPERATORS_FOR_FLAGS(FSVolumeInfoBitmap)

struct FSVolumeInfo {
    uint64_t fileCount = 0;   ///< used inodes: files, folders and everything else
    uint64_t folderCount = 0; ///< always 0: no Linux file system counts its folders
    uint64_t totalBytes = 0;
    uint64_t freeBytes = 0; ///< space left for ordinary users
};

/// Fills the fields of @p info (may be null) that @p whichInfo asks for and @p volumeName (may be
/// null): the file system's label, else the last component of the mount point, else, for "/", the
/// host's name. nsvErr if there is no such mount. Any thread.
[[nodiscard]] MWCORE_EXPORT OSStatus FSGetVolumeInfo(FSVolumeRefNum volume,
                                                     FSVolumeInfoBitmap whichInfo,
                                                     FSVolumeInfo *info, QString *volumeName);

} // namespace MWCore
