// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>

namespace MWCore {

/// What kind of thing an item is. Hosts store the numbers, so they are fixed; 4 is not used.
enum MXItemKind : int32_t {
    MXItemKindUnknown = 0, ///< gone, not to be examined, or a device, fifo or socket
    MXItemKindFolder = 1,
    MXItemKindFile = 2, ///< a plain file that is none of the others
    MXItemKindLink = 3, ///< a symbolic link that leads to something
    MXItemKindAlias = 5,
    MXItemKindApplication = 6, ///< a bundle folder or a single file
    MXItemKindPackage = 7,     ///< a folder that is shown as one thing
    MXItemKindVolume = 8,      ///< a mount point
};

} // namespace MWCore
