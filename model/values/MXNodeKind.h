// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>

namespace MWCore {

/// The type of an item's node in its file system (inode(7)), whatever the item is to people: an
/// application can be a folder or a file.
enum class MXNodeKind : uint8_t {
    Unknown, ///< gone, or not to be examined
    Folder,
    File,
    Link, ///< symbolic, wherever it leads
    Fifo,
    Socket,
    BlockDevice,
    CharacterDevice,
};

} // namespace MWCore
