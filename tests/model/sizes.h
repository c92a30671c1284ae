// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "tests/model/items.h"

#include <ostream>
#include <string>

namespace MWCore {

/// Shows the sums in test failures.
inline void PrintTo(const MXFSOSizeRecord &record, std::ostream *stream) {
    *stream << "data " << record.dataForkSize << " (" << record.physicalDataForkSize
            << "), resources " << record.resourceForkSize << " (" << record.physicalResourceForkSize
            << "), total " << record.totalSize << " (" << record.physicalTotalSize << "), "
            << record.containedFileCount << " files, " << record.containedFolderCount
            << " folders, " << record.hiddenItemCount << " hidden";
}

} // namespace MWCore

/// The size of the item at @p path.
inline MWCore::MXFSOSizeRecord sumsOf(const std::string &path) {
    const auto item = MWCore::MXFileSystemObject::newFSOForLocalPath(text(path), false);
    return item->sizeObject()->record();
}
