// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/metadata/conventions.h"
#include "platform/metadata/MetadataReader.h"

#include <QByteArray>
#include <QVarLengthArray>

namespace MWCore {

/// A place that holds Finder information of an item.
struct FinderInfoPlace {
    const Convention *convention; ///< null for the sidecar
    QByteArray value;             ///< of the extended attribute
    FinderInfo info;

    [[nodiscard]] const char *name() const {
        return convention ? convention->attribute : "a ._ file";
    }
};
using FinderInfoPlaces = QVarLengthArray<FinderInfoPlace, 4>;

/// Finds the places in order of precedence. A place that cannot be read is left out; that is a
/// failure only if there is no other. Any thread.
[[nodiscard]] OSStatus findFinderInfoPlaces(MetadataReader &look, FinderInfoPlaces &places);

/// The first place whose information is not all zero, or null.
[[nodiscard]] const FinderInfoPlace *firstWithInfo(const FinderInfoPlaces &places);

} // namespace MWCore
