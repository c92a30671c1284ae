// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "icons/IconFamily.h"

#include "icons/BitmapRows.h"
#include "icons/PackedRows.h"

#include "platform/foundation/Log.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <optional>
#include <span>

#include <QByteArray>

namespace MWCore {
namespace {

struct Layout {
    int32_t bitsPerPixel;
    int32_t samplesPerPixel;
    int32_t bitsPerSample;

    bool operator==(const Layout &) const = default;
};
constexpr Layout kBits{1, 1, 1};
constexpr Layout kGray{8, 1, 8};
constexpr Layout kRgb{24, 3, 8};
constexpr Layout kRgba{32, 4, 8};

struct RowPacker {
    Layout layout;
    PackRow *pack;
};
constexpr RowPacker k32BitDataRows[] = {{kRgb, argbFromRgb}, {kRgba, argbFromRgba}};
constexpr RowPacker k8BitDataRows[] = {{kRgb, indexesFromRgb}, {kRgba, indexesFromRgba}};
constexpr RowPacker k8BitMaskRows[] = {
    {kGray, alphaFromGray}, {kRgb, opaque}, {kRgba, alphaFromRgba}};
constexpr RowPacker k1BitMaskRows[] = {
    {kBits, bitsFromBits}, {kGray, bitsFromGray}, {kRgb, opaque}, {kRgba, bitsFromRgba}};

/// Logs why a packer does not support a layout; @p packer is its name in the log.
using LogLayout = void(const char *packer, const Layout &layout);

void logSamples(const char *packer, const Layout &layout) {
    if (layout.bitsPerSample != 8)
        qCWarning(mwcoreLog, "%s:requiredPixelSize: returning NULL due to bitsPerSample == %d",
                  packer, layout.bitsPerSample);
    else // the message deliberately ends in "%"
        qCWarning(mwcoreLog,
                  "%s:requiredPixelSize: returning NULL due to samplesPerPixel == %d, "
                  "bitsPerPixel == %%",
                  packer, layout.samplesPerPixel);
}

void logAll(const char *packer, const Layout &layout) {
    qCWarning(mwcoreLog,
              "%s:requiredPixelSize: returning NULL due to bitsPerPixel == %d, "
              "samplesPerPixel== %d, bitsPerSample == %d",
              packer, layout.bitsPerPixel, layout.samplesPerPixel, layout.bitsPerSample);
}

struct Packer {
    const char *name;
    std::span<const RowPacker> rows;
    LogLayout *logLayout;
    int bitsPerPixel; ///< of the packed rows
    int planes;       ///< the number of times that they are stored
};
constexpr Packer k32BitData{"get32BitDataFromBitmapImageRep", k32BitDataRows, logSamples, 32, 1};
constexpr Packer k8BitData{"get8BitDataFromBitmapImageRep", k8BitDataRows, logSamples, 8, 1};
constexpr Packer k8BitMask{"get8BitMaskFromBitmapImageRep", k8BitMaskRows, logSamples, 8, 1};
constexpr Packer k1BitMask{"get1BitMaskFromBitmapImageRep", k1BitMaskRows, logAll, 1, 2};

/// Null, with a line in the log, if the packer does not support the bitmap's layout.
PackRow *rowPacker(const Packer &packer, const BitmapImageRep &bitmap) {
    if (bitmap.isPlanar) {
        qCWarning(mwcoreLog, "%s:requiredPixelSize: returning NULL due to isPlanar == YES",
                  packer.name);
        return nullptr;
    }
    const Layout layout{bitmap.bitsPerPixel, bitmap.samplesPerPixel, bitmap.bitsPerSample};
    const auto row = std::ranges::find(packer.rows, layout, &RowPacker::layout);
    if (row != packer.rows.end())
        return row->pack;
    packer.logLayout(packer.name, layout);
    return nullptr;
}

/// The packed rows, once for each plane. Bytes that they do not fill, if a row of bits is not a
/// multiple of 8 pixels wide, are opaque.
QByteArray packedRows(const BitmapRows &rows, int32_t size, PackRow *pack, const Packer &packer) {
    const int64_t rowLength = int64_t(size) * packer.bitsPerPixel / 8;
    const int64_t planeLength = int64_t(size) * size * packer.bitsPerPixel / 8;
    QByteArray data(packer.planes * planeLength, '\xFF');
    auto *target = reinterpret_cast<uint8_t *>(data.data());
    for (int32_t y = 0; y < size; ++y)
        pack(rows.row(y), {target + y * rowLength, std::size_t(rowLength)});
    for (int plane = 1; plane < packer.planes; ++plane)
        std::copy_n(target, planeLength, target + plane * planeLength);
    return data;
}

/// nullopt also, without a line in the log, if pixels are missing or memory runs out.
std::optional<QByteArray> packed(const Packer &packer, const BitmapImageRep &bitmap,
                                 int32_t requiredPixelSize) try {
    if (bitmap.pixelsWide != requiredPixelSize || bitmap.pixelsHigh != requiredPixelSize ||
        requiredPixelSize < 0)
        return std::nullopt;
    PackRow *const pack = rowPacker(packer, bitmap);
    const auto rows = pack ? rowsOf(bitmap) : std::nullopt;
    if (!rows)
        return std::nullopt;
    return packedRows(*rows, requiredPixelSize, pack, packer);
} catch (const std::bad_alloc &) {
    return std::nullopt;
}

} // namespace

std::optional<QByteArray> IconFamily::get32BitDataFromBitmapImageRep(const BitmapImageRep &bitmap,
                                                                     int32_t requiredPixelSize) {
    return packed(k32BitData, bitmap, requiredPixelSize);
}

std::optional<QByteArray> IconFamily::get8BitDataFromBitmapImageRep(const BitmapImageRep &bitmap,
                                                                    int32_t requiredPixelSize) {
    return packed(k8BitData, bitmap, requiredPixelSize);
}

std::optional<QByteArray> IconFamily::get8BitMaskFromBitmapImageRep(const BitmapImageRep &bitmap,
                                                                    int32_t requiredPixelSize) {
    return packed(k8BitMask, bitmap, requiredPixelSize);
}

std::optional<QByteArray> IconFamily::get1BitMaskFromBitmapImageRep(const BitmapImageRep &bitmap,
                                                                    int32_t requiredPixelSize) {
    return packed(k1BitMask, bitmap, requiredPixelSize);
}

} // namespace MWCore
