// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/files/ItemLocator.h"

namespace MWCore {

/// Creates an empty file with mode 0666 minus the process's umask. dupFNErr if anything is there,
/// even a dangling link.
[[nodiscard]] OSStatus makeEmptyFile(const ItemLocator &place);

} // namespace MWCore
