// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/posix/Descriptor.h"
#include "platform/files/ItemPlace.h"

namespace MWCore {

/// A turn among the processes and threads that change metadata in one folder, until this object
/// goes. Meant for the few system calls between the last look at what is there and the change.
/// Anybody who may read the folder can keep it locked; so when nothing in it has changed for two
/// seconds, or after ten seconds at most, the turn is taken without the lock, and only the look
/// before the change and the one after it protect others' changes. The same where nothing can be
/// locked at all. In a folder whose names this process may not read the item is locked instead:
/// among writers of whom some may read them, that is no turn.
class FolderTurn {
public:
    explicit FolderTurn(const ItemPlace &place);

    /// tmfoErr or memFullErr when the turn could not be taken for want of descriptors or memory.
    [[nodiscard]] OSStatus status() const { return status_; }

private:
    void wait(int folder) const;
    [[nodiscard]] bool isHeld() const;

    Descriptor locked_; ///< while it is open
    OSStatus status_ = noErr;
};

} // namespace MWCore
