// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace MWCore {

/// Filters the rows of a PNG with 8-bit RGBA pixels (ISO/IEC 15948, clause 9), so that they
/// compress better. Of the five filters, each row gets the one that yields the least sum of
/// absolute values.
class PngFilter {
public:
    /// @p rowLength is in bytes.
    explicit PngFilter(std::size_t rowLength);

    /// Filters the next row from the top and writes the filter's type and the result, a byte more
    /// than a row, to @p target.
    void filter(const uint8_t *row, uint8_t *target);

private:
    template <typename Predict> void attempt(uint8_t type, Predict predict);

    std::size_t length_;
    // After the bytes of a pixel of zeros.
    std::vector<uint8_t> row_, above_;
    // After the filter's type.
    std::vector<uint8_t> attempted_, best_;
    uint32_t leastSum_ = 0;
};

} // namespace MWCore
