// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>

/// Conversion between bytes in sRGB (IEC 61966-2-1) and numbers that are proportional to light.
/// Every byte survives the way there and back.
namespace MWCore {

/// Red, green and blue in linear light, multiplied by alpha, and alpha; all from 0 to 1. The
/// compiler computes on all four at once.
using LinearPixel = float __attribute__((vector_size(4 * sizeof(float))));

/// Converts @p count pixels of QImage::Format_RGBA8888.
void linearFromSrgb(const uint8_t *rgba, int count, LinearPixel *pixels);

/// The reverse, clamped to what a byte can express. Invisible pixels become four zeros.
void srgbFromLinear(const LinearPixel *pixels, int count, uint8_t *rgba);

} // namespace MWCore
