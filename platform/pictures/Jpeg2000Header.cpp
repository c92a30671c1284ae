// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/pictures/Jpeg2000Header.h"

#include "platform/formats/BigEndian.h"

#include <algorithm>
#include <limits>

namespace MWCore {
namespace {

constexpr QByteArrayView kFileSignature("\0\0\0\x0CjP  \r\n\x87\n", 12);
constexpr QByteArrayView kCodestreamStart("\xFF\x4F\xFF\x51", 4);
constexpr uint32_t kSyccColours = 18;

/// A box of a file, or a box within a box.
struct Box {
    QByteArrayView type;
    QByteArrayView content; ///< shorter than declared if the file is truncated
    uint64_t end = 0;       ///< the offset of the next box
};

/// The box at @p offset. A length of 0 reaches to the end of @p bytes; 1 is followed by a longer
/// length.
std::optional<Box> boxAt(QByteArrayView bytes, uint64_t offset) {
    const auto length = numberAt<uint32_t>(bytes, offset);
    const auto type = bytesAt(bytes, offset + 4, 4);
    const auto longLength = numberAt<uint64_t>(bytes, offset + 8);
    if (!type || (*length == 1 && !longLength))
        return std::nullopt;
    const uint64_t header = *length == 1 ? 16 : 8;
    const uint64_t rest = static_cast<uint64_t>(bytes.size()) - offset;
    uint64_t size = *length == 1 ? *longLength : *length;
    if (*length == 0 || size > rest)
        size = rest;
    if (size < header)
        return std::nullopt;
    return Box{*type, *bytesAt(bytes, offset + header, size - header), offset + size};
}

/// The content of the first box of @p type.
std::optional<QByteArrayView> boxContent(QByteArrayView bytes, QByteArrayView type) {
    uint64_t offset = 0;
    while (const auto box = boxAt(bytes, offset)) {
        if (box->type == type)
            return box->content;
        offset = box->end;
    }
    return std::nullopt;
}

/// The codestream, and what the boxes of the file say of its colours.
std::optional<Jpeg2000Header> located(QByteArrayView bytes) {
    Jpeg2000Header header;
    header.codestream = bytes;
    if (!bytes.startsWith(kFileSignature))
        return header;
    const auto description = boxContent(bytes, "jp2h").value_or(QByteArrayView());
    const auto codestream = boxContent(bytes, "jp2c");
    if (!codestream || boxContent(description, "pclr"))
        return std::nullopt;
    const auto colours = boxContent(description, "colr").value_or(QByteArrayView());
    header.codestream = *codestream;
    header.isYcc = colours.startsWith('\1') && numberAt<uint32_t>(colours, 3) == kSyccColours;
    return header;
}

/// One axis of the image and its tiles on the reference grid.
struct Grid {
    uint32_t end, start, tile, tileStart;

    [[nodiscard]] bool isValid() const {
        constexpr uint32_t kLargest = std::numeric_limits<int32_t>::max();
        return start < end && end <= kLargest && tile > 0 && tileStart <= start &&
               uint64_t{tileStart} + tile > start;
    }
    [[nodiscard]] int length() const { return static_cast<int>(end - start); }
    [[nodiscard]] int tileLength() const { return static_cast<int>(std::min(tile, end - start)); }
    [[nodiscard]] int64_t tiles() const { return (int64_t{end} - tileStart + tile - 1) / tile; }
};

std::optional<Grid> gridAt(QByteArrayView codestream, uint64_t offset) {
    constexpr uint64_t kNextNumber = 8; // those of x and y alternate
    const auto end = numberAt<uint32_t>(codestream, offset);
    const auto start = numberAt<uint32_t>(codestream, offset + kNextNumber);
    const auto tile = numberAt<uint32_t>(codestream, offset + 2 * kNextNumber);
    const auto tileStart = numberAt<uint32_t>(codestream, offset + 3 * kNextNumber);
    if (!tileStart)
        return std::nullopt;
    const Grid grid = {*end, *start, *tile, *tileStart};
    return grid.isValid() ? std::optional(grid) : std::nullopt;
}

/// Whether the components are few, of at most 16 bits, and hardly subsampled.
bool haveSupportedComponents(QByteArrayView codestream, int components) {
    constexpr int kMostComponents = 4;
    constexpr int kMostBits = 16;
    constexpr int kMostSubsampling = 4;
    constexpr uint64_t kFirstComponent = 42;
    if (components < 1 || components > kMostComponents)
        return false;
    const auto table =
        bytesAt(codestream, kFirstComponent, uint64_t{3} * static_cast<uint64_t>(components));
    for (qsizetype offset = 0; table && offset < table->size(); offset += 3) {
        const int bits = (table->at(offset) & 0x7F) + 1;
        const int columns = static_cast<uint8_t>(table->at(offset + 1));
        const int rows = static_cast<uint8_t>(table->at(offset + 2));
        if (bits > kMostBits || columns < 1 || columns > kMostSubsampling || rows < 1 ||
            rows > kMostSubsampling)
            return false;
    }
    return table.has_value();
}

} // namespace

bool startsLikeJpeg2000(QByteArrayView bytes) {
    return bytes.startsWith(kFileSignature) || bytes.startsWith(kCodestreamStart);
}

std::optional<Jpeg2000Header> jpeg2000Header(QByteArrayView bytes) {
    auto header = located(bytes);
    if (!header || !header->codestream.startsWith(kCodestreamStart))
        return std::nullopt;
    const auto columns = gridAt(header->codestream, 8);
    const auto rows = gridAt(header->codestream, 12);
    header->components = numberAt<uint16_t>(header->codestream, 40).value_or(0);
    if (!columns || !rows || !haveSupportedComponents(header->codestream, header->components))
        return std::nullopt;
    header->size = QSize(columns->length(), rows->length());
    header->tile = QSize(columns->tileLength(), rows->tileLength());
    header->tiles = columns->tiles() * rows->tiles();
    return header;
}

} // namespace MWCore
