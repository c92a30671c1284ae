// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/pictures/PngFilter.h"

#include <algorithm>
#include <cstdlib>
#include <limits>

// The predictions of a byte from those to its left, above it and to the left of that one, which are
// of the same channel. Plain loops, which the compiler turns into vector instructions.

namespace MWCore {
namespace {

constexpr std::size_t kPixelLength = 4; ///< bytes

/// Whichever of the three is nearest to left + above - corner.
int paeth(int left, int above, int corner) {
    const int fromLeft = std::abs(above - corner);
    const int fromAbove = std::abs(left - corner);
    const int fromCorner = std::abs(left + above - 2 * corner);
    const int other = fromAbove <= fromCorner ? above : corner;
    return fromLeft <= fromAbove && fromLeft <= fromCorner ? left : other;
}

/// Bytes stand for numbers from -128 to 127.
uint32_t sumOfAbsolutes(const uint8_t *bytes, std::size_t length) {
    uint32_t sum = 0;
    for (std::size_t at = 0; at < length; ++at)
        sum += uint32_t(std::min<int>(bytes[at], 256 - bytes[at]));
    return sum;
}

} // namespace

PngFilter::PngFilter(std::size_t rowLength)
    : length_(rowLength), row_(kPixelLength + rowLength), above_(row_.size()),
      attempted_(1 + rowLength), best_(1 + rowLength) {}

template <typename Predict> void PngFilter::attempt(uint8_t type, Predict predict) {
    const uint8_t *const row = row_.data();
    const uint8_t *const above = above_.data();
    uint8_t *const filtered = attempted_.data() + 1;
    const std::size_t length = length_; // which the compiler would read anew for each byte
    for (std::size_t at = 0; at < length; ++at)
        filtered[at] =
            uint8_t(row[at + kPixelLength] - predict(row[at], above[at + kPixelLength], above[at]));
    const uint32_t sum = sumOfAbsolutes(filtered, length);
    if (sum >= leastSum_)
        return;
    leastSum_ = sum;
    attempted_[0] = type;
    best_.swap(attempted_);
}

void PngFilter::filter(const uint8_t *row, uint8_t *target) {
    std::copy_n(row, length_, row_.begin() + kPixelLength);
    leastSum_ = std::numeric_limits<uint32_t>::max();
    attempt(0, [](int, int, int) { return 0; });
    attempt(1, [](int left, int, int) { return left; });
    attempt(2, [](int, int above, int) { return above; });
    attempt(3, [](int left, int above, int) { return (left + above) / 2; });
    attempt(4, paeth);
    std::ranges::copy(best_, target);
    row_.swap(above_);
}

} // namespace MWCore
