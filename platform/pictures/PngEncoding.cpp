// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/pictures/PngEncoding.h"

#include "platform/formats/BigEndian.h"
#include "platform/pictures/Png.h"
#include "platform/pictures/PngFilter.h"

#include <algorithm>
#include <array>
#include <memory>
#include <new>

#include <libdeflate.h>

namespace MWCore {
namespace {

constexpr qsizetype kLongestChunk = 0x7FFFFFFF; ///< bytes of data

/// The compressor's level for each effort.
constexpr std::array kLevels = {0, 1, 2, 3, 4, 5, 6, 8, 10, 12};

struct FreeCompressor {
    void operator()(libdeflate_compressor *compressor) const {
        libdeflate_free_compressor(compressor);
    }
};
using Compressor = std::unique_ptr<libdeflate_compressor, FreeCompressor>;

void appendChunk(QByteArray &png, QByteArrayView type, QByteArrayView data) {
    appendNumber(png, static_cast<uint32_t>(data.size()));
    const qsizetype start = png.size();
    png += type;
    png += data;
    const char *const covered = png.constData() + start;
    appendNumber(png, libdeflate_crc32(0, covered, static_cast<std::size_t>(png.size() - start)));
}

/// Width, height, 8 bits per sample, RGBA, the only methods of compression and filtering, not
/// interlaced.
QByteArray header(QSize size) {
    QByteArray bytes;
    appendNumber(bytes, static_cast<uint32_t>(size.width()));
    appendNumber(bytes, static_cast<uint32_t>(size.height()));
    return bytes.append("\x08\x06\0\0\0", 5);
}

/// The rows of @p image, filtered, each after the type of its filter.
QByteArray filteredRows(const QImage &image) {
    const qsizetype rowLength = qsizetype{4} * image.width();
    QByteArray rows((1 + rowLength) * image.height(), Qt::Uninitialized);
    auto *target = reinterpret_cast<uint8_t *>(rows.data());
    PngFilter filter(static_cast<std::size_t>(rowLength));
    for (int y = 0; y < image.height(); ++y, target += 1 + rowLength)
        filter.filter(image.constScanLine(y), target);
    return rows;
}

/// Empty if memory runs out.
QByteArray compressed(const QByteArray &bytes, int level) {
    const Compressor compressor(libdeflate_alloc_compressor(level));
    if (!compressor)
        return {};
    const auto length = static_cast<std::size_t>(bytes.size());
    const std::size_t bound = libdeflate_zlib_compress_bound(compressor.get(), length);
    QByteArray result(static_cast<qsizetype>(bound), Qt::Uninitialized);
    const std::size_t made =
        libdeflate_zlib_compress(compressor.get(), bytes.constData(), length, result.data(), bound);
    result.truncate(static_cast<qsizetype>(made));
    return result;
}

} // namespace

QByteArray encodePng(const QImage &image, int effort) try {
    const QImage pixels = image.convertToFormat(QImage::Format_RGBA8888);
    if (pixels.isNull())
        return {};
    const int level = kLevels[static_cast<std::size_t>(std::clamp(effort, 0, 9))];
    const QByteArray data = compressed(filteredRows(pixels), level);
    if (data.isEmpty() || data.size() > kLongestChunk)
        return {};
    QByteArray png = kPngSignature.toByteArray();
    appendChunk(png, "IHDR", header(pixels.size()));
    appendChunk(png, "IDAT", data);
    appendChunk(png, "IEND", {});
    return png;
} catch (const std::bad_alloc &) {
    return {};
}

} // namespace MWCore
