// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/pictures/Png.h"

#include "platform/formats/BigEndian.h"
#include "platform/pictures/Deflate.h"
#include "platform/pictures/PlainPng.h"
#include "platform/pictures/PngChunks.h"

#include <algorithm>

#include <QBuffer>
#include <QImageReader>

namespace MWCore {
namespace {

constexpr QByteArrayView kLastChunk = "IEND";
constexpr QByteArrayView kPixelChunks[] = {"IDAT", "IHDR", "PLTE", "tRNS", kLastChunk};
constexpr QByteArrayView kColourChunks[] = {"cHRM", "gAMA", "iCCP", "sRGB"};

bool isKept(QByteArrayView type, PngColour colour) {
    return std::ranges::find(kPixelChunks, type) != std::end(kPixelChunks) ||
           (colour == PngColour::Keep &&
            std::ranges::find(kColourChunks, type) != std::end(kColourChunks));
}

/// Whether the pixels of a PNG decompress to no more than an image of @p size can have. libpng
/// also decompresses whatever follows them, and only then ignores it.
bool isWithinSize(QByteArrayView png, QSize size) {
    constexpr qsizetype kLargestPixel = 8; // bytes: 16-bit RGBA
    constexpr qsizetype kPasses = 7;       // of an interlaced image; each row has a filter byte
    const qsizetype most = kLargestPixel * size.width() * size.height() + kPasses * size.height();
    QByteArray pixels(most, Qt::Uninitialized);
    return decompressZlib(compressedPixels(png), &pixels) != LIBDEFLATE_INSUFFICIENT_SPACE;
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
    PngChunks chunks(bytes);
    for (PngChunk chunk; chunks.next(&chunk);) {
        if (isKept(chunk.type, colour))
            kept += chunk.whole;
        if (chunk.type == kLastChunk)
            return kept;
    }
    return {};
}

std::optional<QImage> decodePng(QByteArrayView bytes, QSize size) {
    if (pngSize(bytes) != size)
        return std::nullopt;
    if (auto image = decodePlainPng(bytes))
        return image;
    QByteArray essential = essentialPng(bytes, PngColour::Drop);
    if (!isWithinSize(essential, size))
        return std::nullopt;
    QBuffer buffer(&essential);
    QImageReader reader(&buffer, "png");
    reader.setAutoDetectImageFormat(false);
    const QImage image = reader.read().convertToFormat(QImage::Format_RGBA8888);
    return image.size() == size ? std::optional(image) : std::nullopt;
}

} // namespace MWCore
