// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/pictures/Png.h"

#include "platform/formats/BigEndian.h"

#include <algorithm>
#include <memory>

#include <QBuffer>
#include <QImageReader>

#include <libdeflate.h>

namespace MWCore {
namespace {

constexpr uint64_t kChunkFrame = 12; ///< length, type and checksum

constexpr QByteArrayView kDataChunk = "IDAT";
constexpr QByteArrayView kLastChunk = "IEND";
constexpr QByteArrayView kPixelChunks[] = {kDataChunk, "IHDR", "PLTE", "tRNS", kLastChunk};
constexpr QByteArrayView kColourChunks[] = {"cHRM", "gAMA", "iCCP", "sRGB"};

bool isKept(QByteArrayView type, PngColour colour) {
    return std::ranges::find(kPixelChunks, type) != std::end(kPixelChunks) ||
           (colour == PngColour::Keep &&
            std::ranges::find(kColourChunks, type) != std::end(kColourChunks));
}

struct FreeDecompressor {
    void operator()(libdeflate_decompressor *decompressor) const {
        libdeflate_free_decompressor(decompressor);
    }
};

/// The contents of the IDAT chunks, which are one compressed stream.
QByteArray compressedPixels(QByteArrayView png) {
    constexpr qsizetype kContent = 8; // after length and type
    QByteArray pixels;
    auto offset = static_cast<uint64_t>(kPngSignature.size());
    while (const auto length = numberAt<uint32_t>(png, offset)) {
        const auto chunk = bytesAt(png, offset, kChunkFrame + *length);
        if (!chunk)
            break;
        if (chunk->sliced(4, 4) == kDataChunk)
            pixels += chunk->sliced(kContent, qsizetype{*length});
        offset += static_cast<uint64_t>(chunk->size());
    }
    return pixels;
}

/// Whether the pixels of a PNG decompress to no more than an image of @p size can have. libpng
/// also decompresses whatever follows them, and only then ignores it.
bool isWithinSize(QByteArrayView png, QSize size) {
    constexpr qsizetype kLargestPixel = 8; // bytes: 16-bit RGBA
    constexpr qsizetype kPasses = 7;       // of an interlaced image; each row has a filter byte
    const qsizetype most = kLargestPixel * size.width() * size.height() + kPasses * size.height();
    const std::unique_ptr<libdeflate_decompressor, FreeDecompressor> decompressor(
        libdeflate_alloc_decompressor());
    const QByteArray compressed = compressedPixels(png);
    QByteArray pixels(most, Qt::Uninitialized);
    std::size_t length = 0;
    return decompressor && libdeflate_zlib_decompress(decompressor.get(), compressed.constData(),
                                                      static_cast<std::size_t>(compressed.size()),
                                                      pixels.data(), static_cast<std::size_t>(most),
                                                      &length) != LIBDEFLATE_INSUFFICIENT_SPACE;
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
    if (!isWithinSize(essential, size))
        return std::nullopt;
    QBuffer buffer(&essential);
    QImageReader reader(&buffer, "png");
    reader.setAutoDetectImageFormat(false);
    const QImage image = reader.read().convertToFormat(QImage::Format_RGBA8888);
    return image.size() == size ? std::optional(image) : std::nullopt;
}

} // namespace MWCore
