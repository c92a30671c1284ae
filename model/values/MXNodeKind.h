// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>

namespace MWCore {

/// The type of an item's node in its file system (inode(7)). It differs from the item's kind: an
/// application can be a folder or a file.
enum class MXNodeKind : uint8_t {
    Unknown, ///< gone or not examinable
    Folder,
    File,
    Link, ///< symbolic, possibly broken
    Fifo,
    Socket,
    BlockDevice,
    CharacterDevice,
};

} // namespace MWCore
