// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// This library: measures a folder and prints its number of entries.
#include "benchmarks/size/measure.h"

#include <cinttypes>
#include <cstdio>

int main(int argumentCount, char **arguments) {
    if (argumentCount != 2)
        return 2;
    const auto measured = measure(folderAt(arguments[1]));
    if (!measured)
        return 1;
    std::printf("%" PRIu64 "\n", measured->record.containedItemCount);
    return 0;
}
