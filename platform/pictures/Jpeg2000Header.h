// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>
#include <optional>

#include <QByteArray>
#include <QByteArrayView>
#include <QSize>

namespace MWCore {

/// What a JPEG 2000 file declares before its pixels (ISO/IEC 15444-1, annexes A and I).
struct Jpeg2000Header {
    QByteArrayView codestream; ///< from its first marker to the end of its box or of the file
    QSize size;                ///< in pixels
    int components = 0;
    QSize tile;         ///< at most the size of the image
    int64_t tiles = 0;  ///< their number
    bool isYcc = false; ///< brightness and two differences of colour instead of red, green, blue
};

/// Whether @p bytes start like a JP2 file or a codestream.
[[nodiscard]] bool startsLikeJpeg2000(QByteArrayView bytes);

/// nullopt if no codestream with an image of a valid size is found, if its components are more
/// than four or deeper than 16 bits, or if its values are indices into a palette.
[[nodiscard]] std::optional<Jpeg2000Header> jpeg2000Header(QByteArrayView bytes);

/// The codestream up to its first damaged or dangerous tile-part, with the declared length of a
/// truncated one corrected, so that decoding it takes memory and time in proportion to the number
/// of pixels. nullopt if the header before the tile-parts is damaged, or if the image is divided
/// into too many tiles, packets or code blocks.
[[nodiscard]] std::optional<QByteArray> boundedCodestream(const Jpeg2000Header &header);

} // namespace MWCore
