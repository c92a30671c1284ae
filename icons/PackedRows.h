// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>
#include <span>

/// Conversions of a row of pixels to the bytes of an icon element. @p target is the whole packed
/// row, whose length says how many pixels @p source must hold.
namespace MWCore {

using PackRow = void(const uint8_t *source, std::span<uint8_t> target);

// To alpha, red, green, blue, not premultiplied.

/// Divides the premultiplied colours by alpha: each is multiplied by the single-precision factor
/// 255 / alpha and truncated, and its low 8 bits are kept. All zero if alpha is.
PackRow argbFromRgba;
PackRow argbFromRgb;

// To indexes of the nearest colours of iconPalette8(), alpha ignored.

PackRow indexesFromRgba;
PackRow indexesFromRgb;

// To a byte of opacity per pixel.

PackRow alphaFromRgba;
PackRow alphaFromGray; ///< gray levels become opacities
PackRow opaque;        ///< any number of bits per pixel

// To a bit per pixel, the leftmost in the highest bit; a last group of less than 8 is left out.

/// Set if the least significant byte of the pixel's word in native order is not zero: on a
/// little-endian processor the red sample.
PackRow bitsFromRgba;
PackRow bitsFromGray; ///< set if it is not zero
PackRow bitsFromBits;

} // namespace MWCore
