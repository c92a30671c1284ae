// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/pictures/PngFilter.h"

#include "platform/pictures/PngPrediction.h"

#include <algorithm>
#include <limits>

// Plain loops, which the compiler turns into vector instructions.

namespace MWCore {
namespace {

using PngPrediction::kPixelLength;

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
    attempt(0, PngPrediction::none);
    attempt(1, PngPrediction::sub);
    attempt(2, PngPrediction::up);
    attempt(3, PngPrediction::average);
    attempt(4, PngPrediction::paeth);
    std::ranges::copy(best_, target);
    row_.swap(above_);
}

} // namespace MWCore
