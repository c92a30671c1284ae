// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "model/item/MXFileSystemObject.h"

#include <QSet>

namespace MWCore {

/// What folders alone need.
struct MXFileSystemObject::Contents {
    QList<Ptr> actualContents;  ///< all children
    QList<Ptr> unfilteredItems; ///< those that are not hidden, and some that are about to be
    bool isFiltered = false;    ///< whether the latter are the visible ones
    QSet<const MXFileSystemObject *> leavingItems; ///< hidden, and perhaps still in that list
    MXSortAttribute sortAttribute = MXSortAttributeNone;
    MXSortOrder sortOrder = MXSortOrderNone;
    OSStatus error = noErr; ///< why there are none
};

/// Texts that few objects have; null where they do not.
struct MXFileSystemObject::RareTexts {
    // what a host set in place of the record's
    QString completePath;
    QString owner;
    QString group;

    QString volumeName;    ///< of a volume, from the first use on
    QString formattedSize; ///< as it first was
};

} // namespace MWCore
