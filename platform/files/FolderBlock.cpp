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
    while (kLength - length_ >= sizeof(dirent64)) { // room for the longest usual name
        const long length =
            syscall(SYS_getdents64, folder, bytes_.get() + length_, kLength - length_);
        if (length < 0 && errno == EINVAL && length_ > 0)
            return Outcome::MoreLeft; // some file systems have longer names
        if (length <= 0)
            return length == 0 ? Outcome::AllRead : Outcome::Failed;
        length_ += static_cast<std::size_t>(length);
    }
    return Outcome::MoreLeft;
}

} // namespace MWCore
