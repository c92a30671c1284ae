// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/pictures/Jpeg2000Header.h"

#include "platform/formats/BigEndian.h"

#include <algorithm>
#include <array>

namespace MWCore {
namespace {

constexpr int64_t kMostTiles = 1024;
constexpr int64_t kMostPackets = 1 << 20;
constexpr int64_t kMostBlocks = 1 << 17;

enum Marker : uint16_t {
    kCodingStyle = 0xFF52,
    kComponentStyle = 0xFF53,
    kTilePart = 0xFF90,
    kTileData = 0xFF93,
};

/// The other segments that a header can contain. A decoder searches on after any other for one
/// that it knows, so that what it finds could not be foreseen here.
constexpr std::array<uint16_t, 11> kHarmless = {0xFF55, 0xFF57, 0xFF58, 0xFF5C, 0xFF5D, 0xFF5E,
                                                0xFF5F, 0xFF60, 0xFF61, 0xFF63, 0xFF64};

/// How a tile's component is divided, from a coding style segment.
struct CodingStyle {
    int layers = 1;
    int levels = 0;     ///< how many times the resolution is halved
    int blockWidth = 0; ///< as powers of two, like all sizes here
    int blockHeight = 0;
    QByteArrayView precincts; ///< two sizes in each byte, the lowest resolution first
};

/// @p style starts with the number of levels.
std::optional<CodingStyle> codingStyle(QByteArrayView style, int layers, bool hasPrecincts) {
    constexpr qsizetype kFixedPart = 5;
    constexpr int kMostLevels = 32;
    constexpr int kLargestBlock = 10;
    if (style.size() < kFixedPart)
        return std::nullopt;
    const CodingStyle read = {layers, static_cast<uint8_t>(style[0]),
                              static_cast<uint8_t>(style[1]) + 2,
                              static_cast<uint8_t>(style[2]) + 2,
                              hasPrecincts ? style.sliced(kFixedPart) : QByteArrayView()};
    const bool isValid = read.levels <= kMostLevels && read.blockWidth <= kLargestBlock &&
                         read.blockHeight <= kLargestBlock &&
                         (!hasPrecincts || read.precincts.size() > read.levels);
    return isValid ? std::optional(read) : std::nullopt;
}

/// How many cells of 2^@p width x 2^@p height divide @p size, wherever their grid begins.
int64_t cells(QSize size, int width, int height) {
    return ((int64_t{size.width()} >> width) + 2) * ((int64_t{size.height()} >> height) + 2);
}

bool isWithinLimits(const CodingStyle &style, const Jpeg2000Header &header) {
    int64_t precincts = 0;
    int64_t blocks = 0;
    for (int level = 0; level <= style.levels; ++level) {
        constexpr uint8_t kUndivided = 0xFF;
        constexpr int kMostHalvings = 31; // of an int
        const auto precinct = style.precincts.isEmpty()
                                  ? kUndivided
                                  : static_cast<uint8_t>(style.precincts[style.levels - level]);
        const int width = precinct & 0xF;
        const int height = precinct >> 4;
        const int halvings = std::min(level, kMostHalvings);
        const QSize size(header.tile.width() >> halvings, header.tile.height() >> halvings);
        precincts += cells(size, width, height);
        blocks +=
            cells(size, std::min(width, style.blockWidth), std::min(height, style.blockHeight));
    }
    const int64_t planes = header.tiles * header.components;
    return precincts * planes * style.layers <= kMostPackets && blocks * planes <= kMostBlocks;
}

/// @p segment is what follows the marker and the length.
bool isWithinLimits(uint16_t marker, QByteArrayView segment, const Jpeg2000Header &header) {
    constexpr qsizetype kStyle = 5; // where the number of levels is
    constexpr qsizetype kComponent = 2;
    std::optional<CodingStyle> style;
    if (marker == kCodingStyle && segment.size() > kStyle)
        style = codingStyle(segment.sliced(kStyle), *numberAt<uint16_t>(segment, 2),
                            (segment[0] & 1) != 0);
    else if (marker == kComponentStyle && segment.size() > kComponent)
        style = codingStyle(segment.sliced(kComponent), 1, (segment[1] & 1) != 0);
    else
        return std::ranges::find(kHarmless, marker) != kHarmless.end();
    return style && isWithinLimits(*style, header);
}

/// Goes through the segments of @p bytes from @p offset on to the marker @p last and returns its
/// offset; nullopt if it is missing, or if a segment is unknown or beyond the limits.
std::optional<uint64_t> endOfHeader(const Jpeg2000Header &header, QByteArrayView bytes,
                                    uint64_t offset, Marker last) {
    while (const auto marker = numberAt<uint16_t>(bytes, offset)) {
        if (*marker == last)
            return offset;
        const auto length = numberAt<uint16_t>(bytes, offset + 2);
        const auto segment = bytesAt(bytes, offset + 4, length.value_or(0) - uint64_t{2});
        if (!segment || !isWithinLimits(*marker, *segment, header))
            return std::nullopt;
        offset += 2U + *length;
    }
    return std::nullopt;
}

/// Where a tile-part's fields are, from its marker on.
constexpr uint64_t kPartLength = 6;
constexpr uint64_t kPartHeader = 12;

/// The end of the tile-part at @p offset; nullopt if its header does not end within it or is beyond
/// the limits.
std::optional<uint64_t> endOfTilePart(const Jpeg2000Header &header, uint64_t offset) {
    const auto size = static_cast<uint64_t>(header.codestream.size());
    const uint64_t length = numberAt<uint32_t>(header.codestream, offset + kPartLength).value_or(0);
    // The last one can leave its length open.
    const uint64_t end = length < kPartHeader ? size : std::min(offset + length, size);
    const QByteArrayView part = header.codestream.first(static_cast<qsizetype>(end));
    return endOfHeader(header, part, offset + kPartHeader, kTileData) ? std::optional(end)
                                                                      : std::nullopt;
}

/// Shortens the declared length of a tile-part at @p offset that is truncated.
void correctLength(QByteArray &codestream, uint64_t offset) {
    const uint64_t rest = static_cast<uint64_t>(codestream.size()) - offset;
    const uint64_t field = offset + kPartLength;
    const auto length = numberAt<uint32_t>(codestream, field);
    if (length && *length > rest)
        putNumber(codestream, static_cast<qsizetype>(field), static_cast<uint32_t>(rest));
}

} // namespace

std::optional<QByteArray> boundedCodestream(const Jpeg2000Header &header) {
    constexpr uint64_t kSizeSegment = 4; // the offset of its length
    if (header.tiles > kMostTiles)
        return std::nullopt;
    QByteArray codestream = header.codestream.toByteArray();
    const auto length = numberAt<uint16_t>(codestream, kSizeSegment);
    const auto start =
        endOfHeader(header, codestream, kSizeSegment + length.value_or(0), kTilePart);
    uint64_t end = start.value_or(0);
    while (numberAt<uint16_t>(codestream, end) == kTilePart) {
        const auto next = endOfTilePart(header, end);
        if (!next)
            break;
        correctLength(codestream, end);
        end = *next;
    }
    codestream.truncate(static_cast<qsizetype>(end));
    return start ? std::optional(codestream) : std::nullopt;
}

} // namespace MWCore
