// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mwcore_export.h>

#include <cstdint>

namespace MWCore {

/// Outcome of an operation on files, the catalogue, metadata, forks or aliases: 0 is success,
/// everything else is negative. Hosts log and compare the numbers, so they are fixed.
enum OSStatus : int32_t {
    noErr = 0,
    dskFulErr = -34,   ///< no space left: on the disk, in a quota, or for one item's attributes
    nsvErr = -35,      ///< no such volume
    ioErr = -36,       ///< the system failed to read or write
    bdNamErr = -37,    ///< invalid name: too long, empty, or containing U+0000
    tmfoErr = -42,     ///< too many files are open
    fnfErr = -43,      ///< no such file or folder
    wPrErr = -44,      ///< the file system is read-only
    fBsyErr = -47,     ///< another program is writing it
    dupFNErr = -48,    ///< already exists
    paramErr = -50,    ///< invalid argument
    permErr = -54,     ///< not permitted
    memFullErr = -108, ///< out of memory
    userCanceledErr = -128,
    resNotFound = -192,    ///< no such resource
    resFNotFound = -193,   ///< no resource fork
    mapReadErr = -199,     ///< the stored data is damaged
    fileBoundsErr = -1309, ///< too large
    errFSNotAFolder = -1407,
    errFSOperationNotSupported = -1426, ///< the file system cannot store this for such an item
    errFSAliasLoop = -1427,             ///< a loop of aliases or links
    foreignLinkErr = -30001,            ///< a link on the path may be another user's trap
    folderChangesErr = -30002, ///< entries of the folder kept vanishing while it was listed
    deviceFolderErr = -30003,  ///< a folder whose path begins with "/dev" is not listed
    unreachableErr = -30004,   ///< the server or program behind the file system is gone
};

/// The status for an `errno` value; noErr for 0.
[[nodiscard]] MWCORE_EXPORT OSStatus statusFromErrno(int error);

/// What went wrong, as a phrase without a full stop: "not permitted". Never null.
[[nodiscard]] MWCORE_EXPORT const char *statusText(OSStatus status);

} // namespace MWCore
