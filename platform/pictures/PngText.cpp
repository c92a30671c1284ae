// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/pictures/PngText.h"

#include "platform/pictures/Deflate.h"
#include "platform/pictures/PngChunks.h"

namespace MWCore {
namespace {

/// Takes the bytes up to the next NUL from @p content; nullopt if there is none.
std::optional<QByteArrayView> takeText(QByteArrayView &content) {
    const qsizetype end = content.indexOf('\0');
    if (end < 0)
        return std::nullopt;
    const QByteArrayView text = content.first(end);
    content = content.sliced(end + 1);
    return text;
}

/// Takes the next byte; nullopt at the end.
std::optional<char> takeByte(QByteArrayView &content) {
    if (content.isEmpty())
        return std::nullopt;
    const char byte = content.front();
    content = content.sliced(1);
    return byte;
}

/// The text at the end of a chunk.
std::optional<QByteArray> textIn(QByteArrayView content, bool isCompressed) {
    if (!isCompressed)
        return content.size() <= kLongestPngText ? std::optional(content.toByteArray())
                                                 : std::nullopt;
    QByteArray text(kLongestPngText, Qt::Uninitialized);
    return decompressZlib(content, &text) == LIBDEFLATE_SUCCESS ? std::optional(text)
                                                                : std::nullopt;
}

/// The same after the fields of iTXt: whether it is compressed, method, language, translation.
std::optional<QByteArray> internationalText(QByteArrayView content) {
    const auto isCompressed = takeByte(content);
    const auto method = takeByte(content);
    if (!method || !takeText(content) || !takeText(content))
        return std::nullopt;
    return textIn(content, *isCompressed != 0);
}

} // namespace

std::optional<QByteArray> pngText(QByteArrayView png, QByteArrayView keyword) {
    PngChunks chunks(png);
    for (PngChunk chunk; chunks.next(&chunk);) {
        const bool isPlain = chunk.type == "tEXt";
        const bool isCompressed = chunk.type == "zTXt";
        if (!isPlain && !isCompressed && chunk.type != "iTXt")
            continue;
        QByteArrayView content = chunk.content;
        if (takeText(content) != keyword)
            continue;
        if (!isPlain && !isCompressed)
            return internationalText(content);
        return isPlain || takeByte(content) ? textIn(content, isCompressed) : std::nullopt;
    }
    return std::nullopt;
}

} // namespace MWCore
