// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/private/Descriptor.h"
#include "platform/files/ItemPlace.h"

namespace MWCore {

/// A turn among the processes and threads that change metadata in one folder, until this object
/// goes. Meant for the few system calls between the last look at what is there and the change.
/// Anybody who may read the folder can keep it locked; so after two seconds the turn is taken
/// without the lock, and only the look before the change and the one after it protect others'
/// changes. The same where a folder cannot be locked at all.
class FolderTurn {
public:
    explicit FolderTurn(const ItemPlace &place);

private:
    Descriptor folder_; ///< locked while it is open
};

} // namespace MWCore
