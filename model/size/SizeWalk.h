// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "model/size/MXSizeMeasurement.h"

#include <atomic>

#include <QByteArray>

namespace MWCore {

/// Measures everything below the folder at @p path, in file-system representation and of any
/// length; nothing below what is no folder. Links are not followed, except by @p path. What each
/// entry adds is what an object made of it would tell of itself.
///
/// Runs on this thread and, once there is more to do, on others of its own, which are gone when it
/// returns. Once @p isCancelled, each thread ends the entry that it measures; the first entry is
/// always measured, before other threads start. Memory does not grow with the tree.
[[nodiscard]] MXSizeMeasurement measureContents(const QByteArray &path,
                                                const MXSizeOptions &options,
                                                const std::atomic<bool> &isCancelled);

} // namespace MWCore
