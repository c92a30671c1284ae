// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/icns/IconElementData.h"

#include "platform/formats/icns/IconPalettes.h"
#include "platform/formats/icns/IconPixels.h"

#include <cstdint>
#include <span>
#include <vector>

namespace MWCore {
namespace {

constexpr int kRgbaLength = 4; ///< bytes of a pixel
constexpr int kAlpha = 3;      ///< index of its sample

/// The samples of all pixels; the rows of this format are not padded.
std::span<const uint8_t> samplesOf(const QImage &image) {
    return {image.constBits(), static_cast<std::size_t>(image.sizeInBytes())};
}

QByteArray bytesOf(const std::vector<uint8_t> &values) {
    return {reinterpret_cast<const char *>(values.data()), static_cast<qsizetype>(values.size())};
}

std::vector<uint8_t> alphaOf(const QImage &image) {
    const std::span<const uint8_t> samples = samplesOf(image);
    std::vector<uint8_t> alpha(samples.size() / kRgbaLength);
    for (std::size_t index = 0; index < alpha.size(); ++index)
        alpha[index] = samples[index * kRgbaLength + kAlpha];
    return alpha;
}

QByteArray indexedOf(const QImage &image) {
    const std::span<const uint8_t> samples = samplesOf(image);
    std::vector<uint8_t> indexes(samples.size() / kRgbaLength);
    nearestIndexes8(samples, kRgbaLength, indexes);
    return bytesOf(indexes);
}

QByteArray bitmapOf(const QImage &image) {
    constexpr std::size_t kBits = 8;
    constexpr uint8_t kHalfOpaque = 128;
    const std::vector<uint8_t> alpha = alphaOf(image);
    std::vector<uint8_t> plane(alpha.size() / kBits);
    for (std::size_t index = 0; index < alpha.size(); ++index)
        if (alpha[index] >= kHalfOpaque)
            plane[index / kBits] |= static_cast<uint8_t>(1 << (kBits - 1 - index % kBits));
    return bytesOf(plane) + bytesOf(plane);
}

} // namespace

QByteArray elementData(const QImage &image, const IconElementType &type) {
    switch (type.encoding) {
    case IconEncoding::Mask:
        return bytesOf(alphaOf(image));
    case IconEncoding::Indexed8:
        return indexedOf(image);
    case IconEncoding::Bitmap:
        return bitmapOf(image);
    default:
        return argbOf(image);
    }
}

} // namespace MWCore
