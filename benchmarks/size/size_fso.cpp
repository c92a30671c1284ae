// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// This library: measures a folder and prints its number of entries.
#include "model/item/MXFileSystemObject.h"
#include "platform/foundation/FileSystemText.h"

#include <cinttypes>
#include <cstdio>

using namespace MWCore;

int main(int argumentCount, char **arguments) {
    if (argumentCount != 2)
        return 2;
    const auto folder = MXFileSystemObject::newFSOForLocalPath(
        stringWithFileSystemRepresentation(arguments[1]), false);
    MXSizeOptions options;
    options.walksVolume = true;
    const auto measured = folder ? folder->measureSize(options) : std::nullopt;
    if (!measured)
        return 1;
    std::printf("%" PRIu64 "\n", measured->record.containedItemCount);
    return 0;
}
