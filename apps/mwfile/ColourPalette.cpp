// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "ColourPalette.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <span>

namespace MWCore::mwfile {
namespace {

constexpr int kChannels = 3;
constexpr int kChannelBits = 8;
constexpr uint32_t kChannelMask = 0xFF;

int channelOf(QRgb colour, int channel) {
    return static_cast<int>(colour >> (channel * kChannelBits) & kChannelMask);
}

/// Pixels of similar colours.
struct Box {
    std::span<QRgb> pixels;
    std::array<double, kChannels> mean = {};
    int widestChannel = 0;
    double spread = 0; ///< the sum of squared distances from the mean, in that channel
};

double sumOf(std::span<const QRgb> pixels, int channel) {
    double sum = 0;
    for (const QRgb pixel : pixels)
        sum += channelOf(pixel, channel);
    return sum;
}

double spreadOf(std::span<const QRgb> pixels, int channel, double mean) {
    double sum = 0;
    for (const QRgb pixel : pixels)
        sum += (channelOf(pixel, channel) - mean) * (channelOf(pixel, channel) - mean);
    return sum;
}

Box boxOf(std::span<QRgb> pixels) {
    Box box = {pixels, {}, 0, 0};
    for (int channel = 0; channel < kChannels; ++channel) {
        double &mean = box.mean[static_cast<std::size_t>(channel)];
        mean = sumOf(pixels, channel) / static_cast<double>(pixels.size());
        const double spread = spreadOf(pixels, channel, mean);
        if (spread > box.spread) {
            box.spread = spread;
            box.widestChannel = channel;
        }
    }
    return box;
}

/// Divides @p box at its mean, which lies between two of its values if it has any spread.
std::array<Box, 2> halvesOf(const Box &box) {
    const double mean = box.mean[static_cast<std::size_t>(box.widestChannel)];
    const auto isLower = [&](QRgb pixel) { return channelOf(pixel, box.widestChannel) <= mean; };
    const auto upper = std::partition(box.pixels.begin(), box.pixels.end(), isLower);
    return {boxOf({box.pixels.begin(), upper}), boxOf({upper, box.pixels.end()})};
}

QRgb colourOf(const Box &box) {
    QRgb colour = 0;
    for (int channel = 0; channel < kChannels; ++channel) {
        const double mean = box.mean[static_cast<std::size_t>(channel)];
        colour |= static_cast<QRgb>(std::lround(mean)) << (channel * kChannelBits);
    }
    return colour;
}

} // namespace

std::vector<QRgb> paletteFor(std::vector<QRgb> pixels, int most) {
    if (pixels.empty())
        return {};
    std::vector<Box> boxes = {boxOf(pixels)};
    while (boxes.size() < static_cast<std::size_t>(most)) {
        const auto widest = std::ranges::max_element(boxes, {}, &Box::spread);
        if (widest->spread == 0)
            break;
        const auto [lower, upper] = halvesOf(*widest);
        *widest = lower;
        boxes.push_back(upper);
    }
    std::vector<QRgb> colours(boxes.size());
    std::ranges::transform(boxes, colours.begin(), colourOf);
    return colours;
}

} // namespace MWCore::mwfile
