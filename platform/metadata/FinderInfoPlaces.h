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

/// Appends the places in order of precedence. Skips a place that cannot be read; that is a failure
/// only if no other place is found. Any thread.
[[nodiscard]] OSStatus findFinderInfoPlaces(MetadataReader &reader, FinderInfoPlaces &places);

/// The first place whose information is not all zero, or null.
[[nodiscard]] const FinderInfoPlace *firstWithInfo(const FinderInfoPlaces &places);

} // namespace MWCore
