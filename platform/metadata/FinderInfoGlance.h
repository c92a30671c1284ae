// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "MetadataStore.h"

#include <MWCore/mwcore_export.h>
#include <MWCore/TimeAllowance.h>

#include <QByteArray>

/// Finder information at limited cost, for listing items that somebody may have made slow to read
/// on purpose. Any thread.
namespace MWCore {

/// What two system calls can find.
struct FinderInfoGlance {
    FinderInfo info;     ///< from `user.com.apple.FinderInfo` alone
    bool isWhole = true; ///< no other extended attribute can hold any
};
[[nodiscard]] MWCORE_EXPORT FinderInfoGlance glanceAtFinderInfo(const QByteArray &path);

/// Sets @p info to what glanceAtFinderInfo() finds or, if that may be incomplete and @p allowance
/// has time left, to what readFinderInfo() finds. Returns whether @p info is complete; what cannot
/// be read counts as empty.
[[nodiscard]] MWCORE_EXPORT bool readFinderInfoWithin(TimeAllowance &allowance,
                                                      const QByteArray &path, FinderInfo *info,
                                                      Sidecars sidecars);

} // namespace MWCore
