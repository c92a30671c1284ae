// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/pictures/Png.h"

#include "platform/formats/BigEndian.h"

#include <algorithm>

#include <QBuffer>
#include <QImageReader>

namespace MWCore {
namespace {

constexpr uint64_t kChunkFrame = 12; ///< length, type and checksum

constexpr QByteArrayView kLastChunk = "IEND";
constexpr QByteArrayView kPixelChunks[] = {"IDAT", "IHDR", "PLTE", "tRNS", kLastChunk};
constexpr QByteArrayView kColourChunks[] = {"cHRM", "gAMA", "iCCP", "sRGB"};

bool isKept(QByteArrayView type, PngColour colour) {
    return std::ranges::find(kPixelChunks, type) != std::end(kPixelChunks) ||
           (colour == PngColour::Keep &&
            std::ranges::find(kColourChunks, type) != std::end(kColourChunks));
}

} // namespace

bool isPng(QByteArrayView bytes) {
    return bytes.startsWith(kPngSignature);
}

std::optional<QSize> pngSize(QByteArrayView bytes) {
    constexpr uint32_t kLargest = 0x7FFFFFFF;
    constexpr QByteArrayView kHeader("\0\0\0\x0DIHDR", 8);
    const auto width = numberAt<uint32_t>(bytes, 16);
    const auto height = numberAt<uint32_t>(bytes, 20);
    if (!isPng(bytes) || !height || !bytes.sliced(kPngSignature.size()).startsWith(kHeader))
        return std::nullopt;
    if (*width == 0 || *width > kLargest || *height == 0 || *height > kLargest)
        return std::nullopt;
    return QSize(static_cast<int>(*width), static_cast<int>(*height));
}

QByteArray essentialPng(QByteArrayView bytes, PngColour colour) {
    QByteArray kept = kPngSignature.toByteArray();
    auto offset = static_cast<uint64_t>(kPngSignature.size());
    while (const auto length = numberAt<uint32_t>(bytes, offset)) {
        const auto chunk = bytesAt(bytes, offset, kChunkFrame + *length);
        if (!chunk)
            break;
        const QByteArrayView type = chunk->sliced(4, 4);
        if (isKept(type, colour))
            kept += *chunk;
        if (type == kLastChunk)
            return kept;
        offset += static_cast<uint64_t>(chunk->size());
    }
    return {};
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

} // namespace MWCore
