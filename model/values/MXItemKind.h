// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>

namespace MWCore {

/// The kind of an item. Hosts store the numbers, so they never change; 4 is not used.
enum MXItemKind : int32_t {
    MXItemKindUnknown = 0, ///< gone, not examinable, or a device, fifo or socket
    MXItemKindFolder = 1,
    MXItemKindFile = 2, ///< a plain file that is none of the others
    MXItemKindLink = 3, ///< a symbolic link that is not broken
    MXItemKindAlias = 5,
    MXItemKindApplication = 6, ///< a bundle folder or a single file
    MXItemKindPackage = 7,     ///< a folder that is shown as a single item
    MXItemKindVolume = 8,      ///< a mount point
};

} // namespace MWCore
