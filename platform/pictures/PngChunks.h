// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/formats/BigEndian.h"
#include "platform/pictures/Png.h"

#include <cstdint>

#include <QByteArray>
#include <QByteArrayView>

namespace MWCore {

struct PngChunk {
    QByteArrayView type;    ///< four letters
    QByteArrayView content; ///< without the checksum, which is not checked
    QByteArrayView whole;   ///< with length, type and checksum
};

/// Iterates over the chunks of a PNG, which must outlive this.
class PngChunks {
public:
    explicit PngChunks(QByteArrayView png) : png_(png) {}

    /// Sets @p chunk to the next chunk that is there whole; false if there is none.
    [[nodiscard]] bool next(PngChunk *chunk) {
        constexpr qsizetype kHeader = 8; // length and type
        constexpr uint64_t kFrame = 12;  // the same with the checksum
        const auto length = numberAt<uint32_t>(png_, offset_);
        const auto whole = length ? bytesAt(png_, offset_, kFrame + *length) : std::nullopt;
        if (!whole)
            return false;
        *chunk = {whole->sliced(4, 4), whole->sliced(kHeader, qsizetype{*length}), *whole};
        offset_ += static_cast<uint64_t>(whole->size());
        return true;
    }

private:
    QByteArrayView png_;
    uint64_t offset_ = static_cast<uint64_t>(kPngSignature.size());
};

/// The contents of the IDAT chunks, which are one compressed stream.
[[nodiscard]] inline QByteArray compressedPixels(QByteArrayView png) {
    QByteArray pixels;
    PngChunks chunks(png);
    for (PngChunk chunk; chunks.next(&chunk) && chunk.type != "IEND";)
        if (chunk.type == "IDAT")
            pixels += chunk.content;
    return pixels;
}

} // namespace MWCore
