// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/pictures/Png.h"

#include "platform/formats/BigEndian.h"

#include <algorithm>

#include <QBuffer>
#include <QImageReader>
#include <QImageWriter>

namespace MWCore {
namespace {

constexpr QByteArrayView kSignature("\x89PNG\r\n\x1a\n", 8);
constexpr qsizetype kChunkFrame = 12; ///< length, type and checksum

/// The chunks that pixels depend on, in the order of the bytes of their types.
constexpr QByteArrayView kPixelChunks[] = {"IDAT", "IEND", "IHDR", "PLTE", "tRNS"};
constexpr QByteArrayView kColourChunks[] = {"cHRM", "gAMA", "iCCP", "sRGB"};

bool isKept(QByteArrayView type, PngColour colour) {
    return std::ranges::find(kPixelChunks, type) != std::end(kPixelChunks) ||
           (colour == PngColour::Keep &&
            std::ranges::find(kColourChunks, type) != std::end(kColourChunks));
}

} // namespace

bool isPng(QByteArrayView bytes) {
    return bytes.startsWith(kSignature);
}

std::optional<QSize> pngSize(QByteArrayView bytes) {
    constexpr uint32_t kLargest = 0x7FFFFFFF;
    constexpr QByteArrayView kHeader("\0\0\0\x0DIHDR", 8);
    const auto width = numberAt<uint32_t>(bytes, 16);
    const auto height = numberAt<uint32_t>(bytes, 20);
    if (!isPng(bytes) || !height || !bytes.sliced(kSignature.size()).startsWith(kHeader))
        return std::nullopt;
    if (*width == 0 || *width > kLargest || *height == 0 || *height > kLargest)
        return std::nullopt;
    return QSize(static_cast<int>(*width), static_cast<int>(*height));
}

QByteArray essentialPng(QByteArrayView bytes, PngColour colour) {
    QByteArray kept = bytes.first(std::min(bytes.size(), kSignature.size())).toByteArray();
    qsizetype offset = kSignature.size();
    while (const auto length = numberAt<uint32_t>(bytes, static_cast<uint64_t>(offset))) {
        const qsizetype size = std::min(kChunkFrame + qsizetype{*length}, bytes.size() - offset);
        const QByteArrayView chunk = bytes.sliced(offset, size);
        if (isKept(chunk.sliced(4).first(std::min<qsizetype>(4, size - 4)), colour))
            kept += chunk;
        offset += size;
    }
    return kept;
}

std::optional<QImage> decodePng(QByteArrayView bytes, QSize size) {
    if (pngSize(bytes) != size)
        return std::nullopt;
    QByteArray essential = essentialPng(bytes, PngColour::Drop);
    QBuffer buffer(&essential);
    QImageReader reader(&buffer, "png");
    reader.setAutoDetectImageFormat(false);
    const QImage image = reader.read().convertToFormat(QImage::Format_RGBA8888);
    return image.size() == size ? std::optional(image) : std::nullopt;
}

QByteArray encodePng(const QImage &image, int effort) {
    // The writer's quality counts down from 100 and nine steps of compression up.
    constexpr int kQualities = 91;
    const int quality = 100 - (std::clamp(effort, 0, 9) * kQualities + 8) / 9;
    const QImage pixels = image.convertToFormat(QImage::Format_RGBA8888);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImageWriter writer(&buffer, "png");
    writer.setQuality(quality);
    // The image's texts, colour space and resolution are left out.
    return writer.write(pixels) ? essentialPng(bytes, PngColour::Drop) : QByteArray();
}

} // namespace MWCore
