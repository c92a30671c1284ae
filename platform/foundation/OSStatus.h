// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mwcore_export.h>

#include <cstdint>

namespace MWCore {

/// Outcome of an operation of the file, catalogue, metadata, fork and alias seams: 0 is success,
/// everything else is negative. Hosts log and compare the numbers, so they are fixed.
enum OSStatus : int32_t {
    noErr = 0,
    dskFulErr = -34,   ///< no space left: the disk, a quota, or what one item may keep
    nsvErr = -35,      ///< no such volume
    ioErr = -36,       ///< the system failed to read or write
    bdNamErr = -37,    ///< a name that cannot be: too long, empty, or with U+0000
    tmfoErr = -42,     ///< too many files are open
    fnfErr = -43,      ///< nothing there
    wPrErr = -44,      ///< the file system is read-only
    fBsyErr = -47,     ///< somebody else is writing it
    dupFNErr = -48,    ///< there already
    paramErr = -50,    ///< an argument that makes no sense
    permErr = -54,     ///< not permitted
    memFullErr = -108, ///< memory ran out
    userCanceledErr = -128,
    resNotFound = -192,    ///< no such resource
    resFNotFound = -193,   ///< no resource fork
    mapReadErr = -199,     ///< what is stored is damaged
    fileBoundsErr = -1309, ///< too large
    errFSNotAFolder = -1407,
    errFSOperationNotSupported = -1426, ///< the file system cannot keep this for such an item
    errFSAliasLoop = -1427,             ///< aliases or links that lead in a circle
    foreignLinkErr =
        -30001, ///< a link on the way to what is to be changed may be another user's trap
};

/// The status for an `errno` value; noErr for 0.
[[nodiscard]] MWCORE_EXPORT OSStatus statusFromErrno(int error);

/// What went wrong, as a sentence without a full stop: "no space left". Never null.
[[nodiscard]] MWCORE_EXPORT const char *statusText(OSStatus status);

} // namespace MWCore
