// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/FolderBlock.h"

#include <cerrno>

#include <sys/syscall.h>
#include <unistd.h>

namespace MWCore {
namespace {

constexpr std::size_t kLength = 65536;

} // namespace

FolderBlock::FolderBlock() : bytes_(std::make_unique<char[]>(kLength)) {}

FolderBlock::Outcome FolderBlock::fill(int folder) {
    length_ = 0;
    status_ = noErr;
    while (kLength - length_ >= sizeof(dirent64)) { // room for the longest usual name
        const long length =
            syscall(SYS_getdents64, folder, bytes_.get() + length_, kLength - length_);
        if (length < 0 && errno == EINVAL && length_ > 0)
            return Outcome::MoreLeft; // some file systems have longer names
        if (length == 0 || (length < 0 && errno == ENOENT))
            return Outcome::AllRead;
        if (length < 0) {
            status_ = statusFromErrno(errno);
            return Outcome::Failed;
        }
        length_ += static_cast<std::size_t>(length);
    }
    return Outcome::MoreLeft;
}

FolderBlock::Outcome FolderBlock::fillFromStart(int folder) {
    if (lseek(folder, 0, SEEK_SET) == 0)
        return fill(folder);
    status_ = statusFromErrno(errno);
    length_ = 0;
    return Outcome::Failed;
}

} // namespace MWCore
