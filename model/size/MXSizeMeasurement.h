// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "MXFSOSizeRecord.h"

#include <MWCore/OSStatus.h>

#include <cstdint>
#include <functional>

#include <QList>
#include <QString>

namespace MWCore {

/// How far a measurement has come.
struct MXSizeProgress {
    uint64_t entries = 0; ///< files and folders seen
    uint64_t bytes = 0;   ///< of both forks of those files
};

/// Hears of it at most 20 times a second, on the thread that asked for the measurement. What it
/// throws ends the measurement and comes through to the caller.
using MXSizeProgressCallback = std::function<void(const MXSizeProgress &)>;

/// How a folder is measured. The defaults match sizeObject().
struct MXSizeOptions {
    /// Of a file or link that has several names below the folder the size is added once. Counts
    /// stay.
    bool countsHardLinksOnce = false;

    /// A resource fork that a sidecar keeps is added once: to the resource forks, and no longer to
    /// the sidecar's data as well. Counts stay.
    bool countsSidecarForksOnce = false;

    /// Folders on which something is mounted are counted, and left out with all that is in them.
    bool staysOnVolume = false;

    /// A volume's contents are measured like those of any folder; else its file system tells what
    /// it knows.
    bool walksVolume = false;

    bool listsUnreadable = false;

    MXSizeProgressCallback progress; ///< may be empty
};

/// What could not be examined or read, and so is missing in the sums.
struct MXUnreadableItem {
    QString path;
    OSStatus status = noErr;
};

/// What measureSize() found.
struct MXSizeMeasurement {
    MXFSOSizeRecord record;
    bool isPartial = false; ///< it was cancelled, so that something may be missing
    uint64_t unreadableCount = 0;
    QList<MXUnreadableItem> unreadable; ///< by path, where MXSizeOptions::listsUnreadable
};

} // namespace MWCore
