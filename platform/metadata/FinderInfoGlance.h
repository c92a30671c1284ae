// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "MetadataStore.h"

#include <MWCore/mwcore_export.h>
#include <MWCore/TimeAllowance.h>

#include <QByteArray>

/// Finder information for listings, which somebody else may have made long on purpose. Any thread.
namespace MWCore {

/// What two system calls tell, whatever an item keeps.
struct FinderInfoGlance {
    FinderInfo info;     ///< of the plain extended attribute alone
    bool isWhole = true; ///< no other extended attribute keeps any
};
[[nodiscard]] MWCORE_EXPORT FinderInfoGlance glanceAtFinderInfo(const QByteArray &path);

/// As readFinderInfo(), where a glance does not tell all and @p allowance grants more; else what
/// the glance tells. Whether @p info is all there is; what cannot be read counts as nothing.
[[nodiscard]] MWCORE_EXPORT bool readFinderInfoWithin(TimeAllowance &allowance,
                                                      const QByteArray &path, FinderInfo *info,
                                                      Sidecars sidecars);

} // namespace MWCore
