// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/metadata/conventions.h"
#include "platform/metadata/ExtendedAttributes.h"
#include "platform/metadata/MetadataStore.h"

#include <QByteArray>
#include <QVarLengthArray>

namespace MWCore {

/// A place that keeps Finder information of an item.
struct FinderInfoPlace {
    const Convention *convention; ///< null for the sidecar
    QByteArray value;             ///< of the extended attribute
    FinderInfo info;

    [[nodiscard]] const char *name() const {
        return convention ? convention->attribute : "a ._ file";
    }
};
using FinderInfoPlaces = QVarLengthArray<FinderInfoPlace, 4>;

/// Finds the places in the order in which they count. What cannot be read is no place; it is a
/// failure only where there is no other. Any thread.
[[nodiscard]] OSStatus findFinderInfoPlaces(const QByteArray &path, const AttributeNames &names,
                                            Sidecars sidecars, FinderInfoPlaces &places);

/// The first place that says anything, or null.
[[nodiscard]] const FinderInfoPlace *firstThatSays(const FinderInfoPlaces &places);

} // namespace MWCore
