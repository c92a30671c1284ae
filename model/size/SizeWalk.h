// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "model/size/MXSizeMeasurement.h"

#include <atomic>

#include <QByteArray>

namespace MWCore {

/// Measures everything below the folder at @p path (file-system representation, of any length); the
/// result is empty if the item is not a folder. Links are not followed, except in @p path. Each
/// entry adds the size that an object of the entry would report.
///
/// Runs on the calling thread and, if there is enough work, on further threads, which end before it
/// returns. After @p isCancelled is set, each thread finishes its current entry and stops; the
/// first entry is always measured, before other threads start. Memory use does not grow with the
/// tree.
[[nodiscard]] MXSizeMeasurement measureContents(const QByteArray &path,
                                                const MXSizeOptions &options,
                                                const std::atomic<bool> &isCancelled);

} // namespace MWCore
