// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/pictures/Png.h"
#include "platform/pictures/PngEncoding.h"
#include "platform/pictures/PngText.h"
#include "tests/fuzz/fuzz.h"

using namespace MWCore;

/// A text is no longer than permitted. What is decoded has the size in the header, and survives
/// being encoded.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size) {
    constexpr int kLargestSide = 128;
    constexpr int kEffort = 1;
    const QByteArray bytes = inputBytes(data, size);
    const auto text = pngText(bytes, "Thumb::URI");
    require(!text || text->size() <= kLongestPngText);
    const auto declared = pngSize(bytes);
    if (!declared || declared->width() > kLargestSide || declared->height() > kLargestSide)
        return 0;
    const auto image = decodePng(bytes, *declared);
    require(!image || (image->size() == declared && image->format() == QImage::Format_RGBA8888));
    require(!image || decodePng(encodePng(*image, kEffort), *declared) == image);
    return 0;
}
