// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/icns/IconPalettes.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <limits>

// The 256 colours are a cube of 6 x 6 x 6 without its black, ramps of red, green, blue and gray,
// and black. Tables give the nearest colour of each part, and the nearest of those is chosen.
//
// The squared distance between the colours c and p is |c|² - (2c·p - |p|²), so the nearest p has
// the highest score 2c·p - |p|², which is the sum of the scores of its channels. A key is a score
// and, in its low byte, 255 - index: the highest key is that of the nearest colour, and of several
// equally near ones of the one with the lowest index.

namespace MWCore {
namespace {

constexpr std::array kCubeLevels{0xFF, 0xCC, 0x99, 0x66, 0x33, 0x00};
constexpr std::array kRampLevels{0xEE, 0xDD, 0xBB, 0xAA, 0x88, 0x77, 0x55, 0x44, 0x22, 0x11};

// The number of indexes from one level of blue, green or red in the cube to the next.
constexpr int kBlueWeight = 1;
constexpr int kGreenWeight = kCubeLevels.size();
constexpr int kRedWeight = kGreenWeight * kGreenWeight;

// The index of the first colour of each part.
constexpr int kRedRamp = kRedWeight * kGreenWeight - 1;
constexpr int kGreenRamp = kRedRamp + int(kRampLevels.size());
constexpr int kBlueRamp = kGreenRamp + int(kRampLevels.size());
constexpr int kGrayRamp = kBlueRamp + int(kRampLevels.size());
constexpr int kBlack = kGrayRamp + int(kRampLevels.size());
static_assert(kBlack == 255);

constexpr std::array<QRgb, 16> kPalette4{
    0xFFFFFFFF, 0xFFFCF305, 0xFFFF6402, 0xFFDD0806, 0xFFF20884, 0xFF4600A5, 0xFF0000D4, 0xFF02ABEA,
    0xFF1FB714, 0xFF006411, 0xFF562C05, 0xFF90713A, 0xFFC0C0C0, 0xFF808080, 0xFF404040, 0xFF000000,
};

constexpr auto kPalette8 = [] {
    std::array<QRgb, 256> palette{};
    QRgb *next = palette.data();
    for (const int red : kCubeLevels)
        for (const int green : kCubeLevels)
            for (const int blue : kCubeLevels)
                *next++ = qRgb(red, green, blue);
    --next; // without black
    for (const int level : kRampLevels)
        *next++ = qRgb(level, 0, 0);
    for (const int level : kRampLevels)
        *next++ = qRgb(0, level, 0);
    for (const int level : kRampLevels)
        *next++ = qRgb(0, 0, level);
    for (const int level : kRampLevels)
        *next++ = qRgb(level, level, level);
    *next = qRgb(0, 0, 0);
    return palette;
}();

constexpr int32_t key(int score, int index) {
    return score * 256 + (kBlack - index);
}

/// The score of a colour for the palette colour that has @p level in one channel, or in each of
/// @p channels, and 0 in the others. @p sum is that of the colour's samples in these channels.
constexpr int score(int sum, int level, int channels = 1) {
    return (2 * sum - channels * level) * level;
}

/// The key of the nearest colour of the ramp that begins at @p index.
constexpr int32_t rampKey(int index, int sum, int channels = 1) {
    int32_t best = std::numeric_limits<int32_t>::min();
    for (const int level : kRampLevels)
        best = std::max(best, key(score(sum, level, channels), index++));
    return best;
}

/// What a channel adds to the key of the nearest colour of the cube.
constexpr int32_t cubeKey(int weight, int sample) {
    int32_t best = std::numeric_limits<int32_t>::min();
    int index = 0;
    for (const int level : kCubeLevels) {
        best = std::max(best, key(score(sample, level), index) - key(0, 0));
        index += weight;
    }
    return best;
}

struct ChannelKeys {
    int32_t cube; ///< to be added up
    int32_t ramp;
};
using ChannelTable = std::array<ChannelKeys, 256>;

constexpr ChannelTable channelTable(int weight, int ramp) {
    ChannelTable table{};
    int sample = 0;
    for (ChannelKeys &keys : table) {
        keys = {cubeKey(weight, sample), rampKey(ramp, sample)};
        ++sample;
    }
    return table;
}
constexpr ChannelTable kRedKeys = channelTable(kRedWeight, kRedRamp);
constexpr ChannelTable kGreenKeys = channelTable(kGreenWeight, kGreenRamp);
constexpr ChannelTable kBlueKeys = channelTable(kBlueWeight, kBlueRamp);

/// By the sum of the three samples.
constexpr auto kGrayKeys = [] {
    std::array<int32_t, 3 * 255 + 1> keys{};
    int sum = 0;
    for (int32_t &key : keys)
        key = rampKey(kGrayRamp, sum++, 3);
    return keys;
}();

/// The key that the cube gives black, which is not stored at its place there.
constexpr int32_t kBlackInCube = key(0, kRedRamp);

} // namespace

std::span<const QRgb, 16> iconPalette4() {
    return kPalette4;
}

std::span<const QRgb, 256> iconPalette8() {
    return kPalette8;
}

uint8_t nearestIndex8(uint8_t red, uint8_t green, uint8_t blue) {
    const ChannelKeys &r = kRedKeys[red];
    const ChannelKeys &g = kGreenKeys[green];
    const ChannelKeys &b = kBlueKeys[blue];
    const int32_t gray = kGrayKeys[std::size_t(red + green + blue)];
    const int32_t cube = key(0, 0) + r.cube + g.cube + b.cube;
    const int32_t best = std::max({cube, r.ramp, g.ramp, b.ramp, gray});
    return uint8_t(best == kBlackInCube ? kBlack : kBlack - best);
}

void nearestIndexes8(std::span<const uint8_t> samples, int samplesPerPixel,
                     std::span<uint8_t> indexes) {
    const uint8_t *pixel = samples.data();
    for (uint8_t &index : indexes) {
        index = nearestIndex8(pixel[0], pixel[1], pixel[2]);
        pixel += samplesPerPixel;
    }
}

} // namespace MWCore
