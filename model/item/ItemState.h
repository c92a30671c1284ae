// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "model/item/MXFileSystemObject.h"

#include <QSet>

namespace MWCore {

/// The children of a folder, their order and the filter.
struct MXFileSystemObject::Contents {
    QList<Ptr> actualContents;                    ///< all children
    QList<Ptr> unfilteredItems;                   ///< the filtered list; see removeHiddenItems()
    bool isFiltered = false;                      ///< whether the filtered list is the visible one
    QSet<const MXFileSystemObject *> newlyHidden; ///< to be removed from the filtered list
    MXSortAttribute sortAttribute = MXSortAttributeNone;
    MXSortOrder sortOrder = MXSortOrderNone;
    OSStatus error = noErr; ///< contentsError()
};

/// Texts that few objects have; null if unset.
struct MXFileSystemObject::RareTexts {
    // set by the host to replace those of the record
    QString completePath;
    QString owner;
    QString group;

    // cached at the first call
    QString volumeName;
    QString formattedSize;
};

} // namespace MWCore
