// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>
#include <span>

#include <QRgb>

/// The palettes of the indexed elements of an icon family. Source: the published icns format.
namespace MWCore {

/// The colours of a 4-bit element by index, opaque.
[[nodiscard]] std::span<const QRgb, 16> iconPalette4();

/// The colours of an 8-bit element by index, opaque.
[[nodiscard]] std::span<const QRgb, 256> iconPalette8();

/// The index of the colour of iconPalette8() at the least squared distance in RGB; of several the
/// lowest.
[[nodiscard]] uint8_t nearestIndex8(uint8_t red, uint8_t green, uint8_t blue);

/// The same for a row of pixels, as many as @p indexes holds. Each has @p samplesPerPixel samples,
/// the first three of which are red, green and blue.
void nearestIndexes8(std::span<const uint8_t> samples, int samplesPerPixel,
                     std::span<uint8_t> indexes);

} // namespace MWCore
