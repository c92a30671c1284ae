// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/FSRef.h>
#include <MWCore/mwcore_export.h>
#include <MWCore/OSStatus.h>

#include <cstdint>

namespace MWCore {

/// What FNNotify() reports.
enum FNMessage : uint32_t { kFNDirectoryModifiedMessage = 1 };

/// Makes the kernel report to those who watch the folder (inotify(7)) that it changed: a change of
/// its attributes (IN_ATTRIB), made by setting its dates of modification and access to now. Only
/// those who may write to the folder can do that. For others noErr is returned as well, because the
/// kernel reports every change of the items in a folder by itself. fnfErr if the folder is gone,
/// errFSNotAFolder if it is none. Any thread.
[[nodiscard]] MWCORE_EXPORT OSStatus FNNotify(const FSRef &folder, FNMessage message);

} // namespace MWCore
