// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/foundation/OSStatus.h"

#include <algorithm>
#include <cerrno>
#include <iterator>

namespace MWCore {
namespace {

struct ErrnoRow {
    int error;
    OSStatus status;
};
constexpr ErrnoRow kErrnoRows[] = {
    {0, noErr},
    {ENOENT, fnfErr},
    {ENOTDIR, fnfErr},
    {ESTALE, fnfErr},
    {ELOOP, errFSAliasLoop},
    {EACCES, permErr},
    {EPERM, permErr},
    {EROFS, wPrErr},
    {ENOSPC, dskFulErr},
    {EDQUOT, dskFulErr},
    {E2BIG, dskFulErr},
    {EFBIG, fileBoundsErr},
    {ERANGE, dskFulErr},
    {ENAMETOOLONG, bdNamErr},
    {EEXIST, dupFNErr},
    {EBUSY, fBsyErr},
    {EAGAIN, fBsyErr},
    {EMFILE, tmfoErr},
    {ENFILE, tmfoErr},
    {ENOMEM, memFullErr},
    {EINVAL, paramErr},
    {ENODEV, nsvErr},
    {EOPNOTSUPP, errFSOperationNotSupported},
    {ENOSYS, errFSOperationNotSupported},
    {ENOTTY, errFSOperationNotSupported},
    {ECANCELED, userCanceledErr},
    {ENOTCONN, unreachableErr},
    {ECONNABORTED, unreachableErr},
    {ECONNREFUSED, unreachableErr},
    {ECONNRESET, unreachableErr},
    {EHOSTDOWN, unreachableErr},
    {EHOSTUNREACH, unreachableErr},
    {ENETUNREACH, unreachableErr},
    {ETIMEDOUT, unreachableErr},
};

struct TextRow {
    OSStatus status;
    const char *text;
};
constexpr TextRow kTextRows[] = {
    {noErr, "done"},
    {dskFulErr, "no space left for it on the disk, in the quota or beside the file"},
    {nsvErr, "there is no such volume"},
    {ioErr, "the system could not read or write it"},
    {bdNamErr, "the name or path is too long, or not possible there"},
    {tmfoErr, "too many files are open"},
    {fnfErr, "no such file or folder"},
    {wPrErr, "the file system is read-only"},
    {fBsyErr, "another program is writing it"},
    {dupFNErr, "it already exists"},
    {paramErr, "invalid argument"},
    {permErr, "not permitted"},
    {memFullErr, "out of memory"},
    {userCanceledErr, "cancelled"},
    {resNotFound, "there is no such resource"},
    {resFNotFound, "there is no resource fork"},
    {mapReadErr, "the stored data is damaged"},
    {fileBoundsErr, "it is too large"},
    {errFSNotAFolder, "not a folder"},
    {errFSOperationNotSupported, "the file system cannot keep that for such an item"},
    {errFSAliasLoop, "its aliases or links form a loop"},
    {foreignLinkErr, "a link on the path may belong to another user; use the real path"},
    {folderChangesErr, "the folder changes faster than it can be read"},
    {deviceFolderErr, "what lies below a path that begins with /dev is not listed"},
    {unreachableErr, "its file system cannot be reached"},
};

} // namespace

OSStatus statusFromErrno(int error) {
    const auto *const row = std::ranges::find(kErrnoRows, error, &ErrnoRow::error);
    return row == std::end(kErrnoRows) ? ioErr : row->status;
}

const char *statusText(OSStatus status) {
    const auto *const row = std::ranges::find(kTextRows, status, &TextRow::status);
    return row == std::end(kTextRows) ? "an unknown failure" : row->text;
}

} // namespace MWCore
