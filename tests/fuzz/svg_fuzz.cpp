// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/pictures/SvgDrawing.h"
#include "tests/fuzz/fuzz.h"

using namespace MWCore;

/// What is harmless stays as it is, and is rendered in a process without fonts.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size) {
    const auto harmless = harmlessSvg(inputBytes(data, size));
    if (!harmless)
        return 0;
    const auto again = harmlessSvg(harmless->bytes);
    require(again && again->bytes == harmless->bytes);
    (void)svgImage(*harmless, {16, 16});
    return 0;
}
