// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "icons/PackedRows.h"

#include "platform/formats/icns/IconPalettes.h"

#include <algorithm>
#include <cstddef>

#include <QtEndian>

// Plain loops without branches, which the compiler turns into vector instructions.

namespace MWCore {
namespace {

constexpr int kOpaque = 255;

/// A pixel in memory as R, G, B, A or A, R, G, B: the first sample in the low byte.
uint32_t pixelAt(const uint8_t *bytes) {
    return qFromLittleEndian<uint32_t>(bytes);
}

uint32_t truncated(uint32_t sample, float factor) {
    return uint32_t(int32_t(float(int32_t(sample)) * factor)) & 0xFF;
}

uint32_t argb(uint32_t rgba) {
    const auto alpha = int32_t(rgba >> 24);
    const int32_t isClear = alpha == 0; // a number: a condition would become a branch
    const float factor = float(kOpaque * (1 - isClear)) / float(alpha + isClear);
    return uint32_t(alpha) | truncated(rgba & 0xFF, factor) << 8 |
           truncated(rgba >> 8 & 0xFF, factor) << 16 | truncated(rgba >> 16 & 0xFF, factor) << 24;
}

template <typename IsSet> void packBits(std::span<uint8_t> target, IsSet isSet) {
    std::size_t pixel = 0;
    for (uint8_t &bits : target) {
        uint32_t packed = 0;
        for (const std::size_t end = pixel + 8; pixel < end; ++pixel)
            packed = packed << 1 | uint32_t(isSet(pixel));
        bits = uint8_t(packed);
    }
}

} // namespace

void argbFromRgba(const uint8_t *source, std::span<uint8_t> target) {
    for (std::size_t at = 0; at < target.size(); at += 4)
        qToLittleEndian(argb(pixelAt(source + at)), target.data() + at);
}

void argbFromRgb(const uint8_t *source, std::span<uint8_t> target) {
    for (std::size_t at = 0; at < target.size(); at += 4) {
        target[at] = kOpaque;
        target[at + 1] = source[0];
        target[at + 2] = source[1];
        target[at + 3] = source[2];
        source += 3;
    }
}

void indexesFromRgba(const uint8_t *source, std::span<uint8_t> target) {
    nearestIndexes8({source, 4 * target.size()}, 4, target);
}

void indexesFromRgb(const uint8_t *source, std::span<uint8_t> target) {
    nearestIndexes8({source, 3 * target.size()}, 3, target);
}

void alphaFromRgba(const uint8_t *source, std::span<uint8_t> target) {
    for (std::size_t pixel = 0; pixel < target.size(); ++pixel)
        target[pixel] = uint8_t(pixelAt(source + 4 * pixel) >> 24);
}

void alphaFromGray(const uint8_t *source, std::span<uint8_t> target) {
    std::ranges::copy_n(source, std::ptrdiff_t(target.size()), target.begin());
}

void opaque(const uint8_t * /*source*/, std::span<uint8_t> target) {
    std::ranges::fill(target, kOpaque);
}

void bitsFromRgba(const uint8_t *source, std::span<uint8_t> target) {
    packBits(target, [source](std::size_t pixel) {
        return (qFromUnaligned<uint32_t>(source + 4 * pixel) & 0xFF) != 0;
    });
}

void bitsFromGray(const uint8_t *source, std::span<uint8_t> target) {
    packBits(target, [source](std::size_t pixel) { return source[pixel] != 0; });
}

void bitsFromBits(const uint8_t *source, std::span<uint8_t> target) {
    std::ranges::copy_n(source, std::ptrdiff_t(target.size()), target.begin());
}

} // namespace MWCore
