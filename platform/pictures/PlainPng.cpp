// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/pictures/PlainPng.h"

#include "platform/formats/BigEndian.h"
#include "platform/pictures/Deflate.h"
#include "platform/pictures/Png.h"
#include "platform/pictures/PngChunks.h"
#include "platform/pictures/PngPrediction.h"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include <QByteArray>
#include <QSize>

#include <libdeflate.h>

namespace MWCore {
namespace {

using PngPrediction::kPixelLength;

/// Depth, colour type, and the methods of compression, filtering and interlacing.
constexpr QByteArrayView kPlainForm("\x08\x06\0\0\0", 5);
constexpr uint64_t kFormOffset = 24;

constexpr int kLongestSide = 65'536; ///< pixels; of larger images the length could overflow

bool isSound(const PngChunk &chunk) {
    const QByteArrayView summed = chunk.whole.sliced(sizeof(uint32_t)).chopped(sizeof(uint32_t));
    const auto length = static_cast<std::size_t>(summed.size());
    return numberAt<uint32_t>(chunk.whole, sizeof(uint32_t) + length) ==
           libdeflate_crc32(0, summed.data(), length);
}

bool changesColours(const PngChunk &chunk) {
    return chunk.type == "cHRM" || chunk.type == "gAMA" || chunk.type == "iCCP" ||
           chunk.type == "tRNS";
}

/// Whether the file is whole, undamaged and in sRGB.
bool isWholeInSrgb(QByteArrayView png) {
    PngChunks chunks(png);
    for (PngChunk chunk; chunks.next(&chunk) && isSound(chunk) && !changesColours(chunk);)
        if (chunk.type == "IEND")
            return true;
    return false;
}

/// @p compressed, if it decompresses to exactly @p length bytes.
std::optional<QByteArray> decompressed(const QByteArray &compressed, qsizetype length) {
    constexpr qsizetype kHighestRatio = 1032; // of deflate
    if (length / kHighestRatio > compressed.size())
        return std::nullopt;
    QByteArray bytes(length, Qt::Uninitialized);
    const bool isWhole =
        decompressZlib(compressed, &bytes) == LIBDEFLATE_SUCCESS && bytes.size() == length;
    return isWhole ? std::optional(std::move(bytes)) : std::nullopt;
}

/// Reverses the filters of the rows, from the top.
class RowRestorer {
public:
    explicit RowRestorer(std::size_t rowLength)
        : row_(kPixelLength + rowLength), above_(row_.size()) {}

    /// Writes the next row, which @p filtered is with its filter's type, to @p target. False if
    /// there is no such type.
    bool restore(const uint8_t *filtered, uint8_t *target);

private:
    template <typename Predict> bool restoreWith(Predict predict, const uint8_t *filtered);

    // After the bytes of a pixel of zeros.
    std::vector<uint8_t> row_, above_;
};

template <typename Predict>
bool RowRestorer::restoreWith(Predict predict, const uint8_t *filtered) {
    uint8_t *const row = row_.data();
    const uint8_t *const above = above_.data();
    const std::size_t length = row_.size();
    for (std::size_t at = kPixelLength; at < length; ++at)
        row[at] = static_cast<uint8_t>(
            *filtered++ + predict(row[at - kPixelLength], above[at], above[at - kPixelLength]));
    return true;
}

bool RowRestorer::restore(const uint8_t *filtered, uint8_t *target) {
    using namespace PngPrediction;
    const auto restored = [this, filtered] {
        switch (*filtered) {
        case 0:
            return restoreWith(none, filtered + 1);
        case 1:
            return restoreWith(sub, filtered + 1);
        case 2:
            return restoreWith(up, filtered + 1);
        case 3:
            return restoreWith(average, filtered + 1);
        case 4:
            return restoreWith(paeth, filtered + 1);
        default:
            return false;
        }
    };
    if (!restored())
        return false;
    std::copy(row_.begin() + kPixelLength, row_.end(), target);
    row_.swap(above_);
    return true;
}

std::optional<QImage> imageOf(const QByteArray &rows, QSize size) {
    QImage image(size, QImage::Format_RGBA8888);
    const std::size_t length = kPixelLength * static_cast<std::size_t>(size.width());
    RowRestorer restorer(length);
    const auto *filtered = reinterpret_cast<const uint8_t *>(rows.constData());
    for (int y = 0; y < image.height(); ++y, filtered += 1 + length)
        if (!restorer.restore(filtered, image.scanLine(y)))
            return std::nullopt;
    return image.isNull() ? std::nullopt : std::optional(std::move(image));
}

} // namespace

std::optional<QImage> decodePlainPng(QByteArrayView bytes) {
    const auto size = pngSize(bytes);
    const bool isPlain = bytesAt(bytes, kFormOffset, kPlainForm.size()) == kPlainForm;
    if (!size || !isPlain || std::max(size->width(), size->height()) > kLongestSide ||
        !isWholeInSrgb(bytes))
        return std::nullopt;
    const qsizetype rowLength = 1 + qsizetype{kPixelLength} * size->width();
    const auto rows = decompressed(compressedPixels(bytes), rowLength * size->height());
    return rows ? imageOf(*rows, *size) : std::nullopt;
}

} // namespace MWCore
