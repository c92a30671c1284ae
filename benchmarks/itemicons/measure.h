// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "benchmarks/support/contender.h"

#include <cstdio>

#include <malloc.h>

/// The main function of a contender that makes icons. Its arguments are the theme and the folder.
namespace itemicons {

/// Images are drawn in this many pixels a side.
inline constexpr int kPixels = 128;

inline long heapBytes() {
    const struct mallinfo2 heap = mallinfo2();
    return static_cast<long>(heap.uordblks + heap.hblkhd);
}

/// Calls `prepare(THEME, FOLDER)`, which lists the items and returns their number, then measures
/// `draw()`, which makes the icon and the image of each, and keeps the icons. Prints its time, the
/// number, and by how much the heap has grown. Further parts are to be ended by `repeat()`.
template <typename Prepare, typename Draw, typename Repeat>
int run(int argumentCount, char **arguments, Prepare prepare, Draw draw, Repeat repeat) {
    if (argumentCount != 3)
        return 2;
    const long items = prepare(arguments[1], arguments[2]);
    const long before = heapBytes();
    const auto start = contender::partStart = contender::Clock::now();
    draw();
    const std::chrono::nanoseconds taken = contender::Clock::now() - start;
    contender::partStart = contender::Clock::now();
    repeat();
    std::printf("%lld %ld %ld\n", static_cast<long long>(taken.count()), items,
                heapBytes() - before);
    contender::printParts();
    return items > 0 ? 0 : 1;
}

} // namespace itemicons
