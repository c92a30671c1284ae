// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "icons/BitmapImageRep.h"

#include <cstdint>
#include <optional>

#include <QtGlobal>

namespace MWCore {

/// The rows of a bitmap that is not planar. Valid as long as the bitmap does not change.
struct BitmapRows {
    const uint8_t *first;
    qsizetype bytesPerRow;
    qsizetype length; ///< of a row without padding, in bytes

    [[nodiscard]] const uint8_t *row(int32_t y) const { return first + y * bytesPerRow; }
};

/// nullopt if a size is negative, a row is longer than bytesPerRow, or bitmapData ends before the
/// last pixel.
[[nodiscard]] inline std::optional<BitmapRows> rowsOf(const BitmapImageRep &bitmap) {
    if (bitmap.pixelsWide < 0 || bitmap.pixelsHigh < 0 || bitmap.bitsPerPixel < 0)
        return std::nullopt;
    const int64_t length = (int64_t(bitmap.pixelsWide) * bitmap.bitsPerPixel + 7) / 8;
    const int64_t spare = bitmap.bitmapData.size() - length; // after the first row
    const bool isEmpty = length == 0 || bitmap.pixelsHigh == 0;
    if (bitmap.bytesPerRow < length ||
        (!isEmpty && (spare < 0 || spare / bitmap.bytesPerRow < bitmap.pixelsHigh - 1)))
        return std::nullopt;
    const auto *first = reinterpret_cast<const uint8_t *>(bitmap.bitmapData.constData());
    return BitmapRows{first, bitmap.bytesPerRow, length};
}

} // namespace MWCore
