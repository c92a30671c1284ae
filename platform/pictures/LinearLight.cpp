// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/pictures/LinearLight.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace MWCore {
namespace {

constexpr int kOpaque = 255;
constexpr float kHalf = 0.5F; // to round
constexpr float kAlphaStep = 1.0F / kOpaque;

/// The light of an sRGB value, both from 0 to 1.
double lightOf(double value) {
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

/// Light is divided into bins so narrow that none holds the limits of two bytes: the darkest
/// bytes, where they are closest, are 1/3295 apart.
constexpr int kBins = 4096;

struct Tables {
    Tables();

    std::array<float, 256> light{};            ///< of each byte
    std::array<float, 256> limit{};            ///< of light, above which the next byte is nearer
    std::array<uint8_t, kBins + 1> binStart{}; ///< the byte for the least light in each bin
};

Tables::Tables() {
    for (int byte = 0; byte <= kOpaque; ++byte) {
        const auto index = static_cast<std::size_t>(byte);
        light[index] = static_cast<float>(lightOf(byte / 255.0));
        limit[index] = static_cast<float>(lightOf((byte + 0.5) / 255.0));
    }
    limit.back() = 2; // more than there is
    uint8_t byte = 0;
    for (std::size_t bin = 0; bin < binStart.size(); ++bin) {
        while (static_cast<float>(bin) / kBins > limit[byte])
            ++byte;
        binStart[bin] = byte;
    }
}

const Tables &tables() {
    static const Tables made;
    return made;
}

/// @p light is from 0 to 1.
uint8_t byteOf(const Tables &table, float light) {
    const uint8_t byte = table.binStart[static_cast<std::size_t>(light * kBins)];
    return light > table.limit[byte] ? static_cast<uint8_t>(byte + 1) : byte;
}

void encodePixel(const Tables &table, const LinearPixel &pixel, uint8_t *rgba) {
    const float alpha = std::clamp(pixel[3], 0.0F, 1.0F);
    const auto opacity = static_cast<uint8_t>(alpha * kOpaque + kHalf);
    const LinearPixel colour = opacity == 0 ? LinearPixel{} : pixel / alpha;
    for (int channel = 0; channel < 3; ++channel)
        rgba[channel] = byteOf(table, std::clamp(colour[channel], 0.0F, 1.0F));
    rgba[3] = opacity;
}

} // namespace

void linearFromSrgb(const uint8_t *rgba, int count, LinearPixel *pixels) {
    const auto &light = tables().light;
    for (int x = 0; x < count; ++x, rgba += 4) {
        const LinearPixel colour = {light[rgba[0]], light[rgba[1]], light[rgba[2]], 1};
        pixels[x] =
            rgba[3] == kOpaque ? colour : colour * (static_cast<float>(rgba[3]) * kAlphaStep);
    }
}

void srgbFromLinear(const LinearPixel *pixels, int count, uint8_t *rgba) {
    const Tables &table = tables();
    for (int x = 0; x < count; ++x)
        encodePixel(table, pixels[x], rgba + std::ptrdiff_t{4} * x);
}

} // namespace MWCore
