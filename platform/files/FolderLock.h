// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/posix/Descriptor.h"
#include "platform/files/ItemLocator.h"

namespace MWCore {

/// A lock on a folder, held for this object's lifetime, among processes and threads that change
/// metadata in it. Hold it only for the few system calls from the last check to the change. Anybody
/// who may read the folder can keep it locked, so the constructor stops waiting once nothing in the
/// folder has changed for two seconds, or after ten seconds at most. The caller then goes on
/// without the lock, as it does where nothing can be locked at all, and only the checks before and
/// after the change protect other writers' changes. If this process may not read the folder, the
/// item is locked instead, which does not exclude writers that lock the folder.
class FolderLock {
public:
    explicit FolderLock(const ItemLocator &place);

    /// tmfoErr or memFullErr if descriptors or memory ran out, else noErr.
    [[nodiscard]] OSStatus status() const { return status_; }

private:
    void wait(int folder) const;
    [[nodiscard]] bool isHeldElsewhere() const;

    OSStatus status_ = noErr;
    Descriptor locked_; ///< locked while it is open
};

} // namespace MWCore
