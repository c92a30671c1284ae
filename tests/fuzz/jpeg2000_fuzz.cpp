// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/pictures/Jpeg2000.h"
#include "tests/fuzz/fuzz.h"

using namespace MWCore;

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size) {
    constexpr int kLargestSide = 128;
    const QByteArray bytes = inputBytes(data, size);
    const auto declared = jpeg2000Size(bytes);
    require(!declared || isJpeg2000(bytes));
    if (!declared || declared->width() > kLargestSide || declared->height() > kLargestSide)
        return 0;
    const auto image = decodeJpeg2000(bytes, *declared);
    require(!image || (image->size() == declared && image->format() == QImage::Format_RGBA8888));
    return 0;
}
