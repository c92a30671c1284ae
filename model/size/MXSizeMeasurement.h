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

/// The progress of a measurement.
struct MXSizeProgress {
    uint64_t entries = 0; ///< files and folders measured
    uint64_t bytes = 0;   ///< both forks of those files
};

/// Called at most 20 times a second, on the thread that started the measurement. An exception that
/// it throws stops the measurement and reaches the caller.
using MXSizeProgressCallback = std::function<void(const MXSizeProgress &)>;

/// How a folder is measured. The defaults match sizeObject().
struct MXSizeOptions {
    /// Adds the size of a file or link with several names below the folder only once. Item counts
    /// are unaffected.
    bool countsHardLinksOnce = false;

    /// Adds a resource fork in a sidecar only once: as a resource fork, not also as the sidecar's
    /// data. Item counts are unaffected.
    bool countsSidecarForksOnce = false;

    /// Counts folders that are mount points, but not their contents.
    bool staysOnVolume = false;

    /// Measures a volume's contents like those of any folder. Otherwise its file system's figures
    /// are used.
    bool walksVolume = false;

    bool listsUnreadable = false;

    MXSizeProgressCallback progress; ///< may be empty
};

/// An item that could not be examined or read and is missing from the sums.
struct MXUnreadableItem {
    QString path;
    OSStatus status = noErr;
};

/// The result of measureSize().
struct MXSizeMeasurement {
    MXFSOSizeRecord record;
    bool isPartial = false; ///< whether it was cancelled, so that items may be missing
    uint64_t unreadableCount = 0;
    QList<MXUnreadableItem> unreadable; ///< sorted by path; empty without `listsUnreadable`
};

} // namespace MWCore
