// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/XmlPieces.h"

#include <algorithm>
#include <iterator>

#include <QString>

namespace MWCore {
namespace {

struct EntityRow {
    QByteArrayView name;
    char byte;
};
constexpr EntityRow kEntityRows[] = {
    {"amp", '&'}, {"lt", '<'}, {"gt", '>'}, {"quot", '"'}, {"apos", '\''},
};

/// The bytes for a reference "&name;" or "&#number;". nullopt if XML 1.0 does not define it.
std::optional<QByteArray> resolved(QByteArrayView name) {
    if (!name.startsWith('#')) {
        const auto *const row = std::ranges::find(kEntityRows, name, &EntityRow::name);
        return row == std::end(kEntityRows) ? std::nullopt
                                            : std::optional(QByteArray(1, row->byte));
    }
    const bool isHexadecimal = name.size() > 1 && name[1] == 'x';
    bool isNumber = false;
    const char32_t character =
        name.sliced(isHexadecimal ? 2 : 1).toUInt(&isNumber, isHexadecimal ? 16 : 10);
    const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
    if (!isNumber || character == 0 || isSurrogate || character > 0x10FFFF)
        return std::nullopt;
    return QString::fromUcs4(&character, 1).toUtf8();
}

/// Line ends normalized as XML 1.0 requires.
QByteArray withLineFeeds(QByteArrayView text) {
    return text.toByteArray().replace("\r\n", "\n").replace('\r', '\n');
}

std::optional<QByteArray> withoutReferences(const QByteArray &text) {
    constexpr qsizetype kLongest = 10; // "#x10FFFF;" and a leading zero
    QByteArray plain;
    plain.reserve(text.size());
    for (qsizetype index = 0; index < text.size(); ++index) {
        if (text[index] != '&') {
            plain += text[index];
            continue;
        }
        const QByteArrayView next = QByteArrayView(text).sliced(index + 1);
        const qsizetype end = next.first(std::min(next.size(), kLongest)).indexOf(';');
        const auto bytes = end < 0 ? std::nullopt : resolved(next.first(end));
        if (!bytes)
            return std::nullopt;
        plain += *bytes;
        index += 1 + end;
    }
    return plain;
}

/// The index of the ">" that ends the tag at the start of @p text, skipping quoted attribute
/// values; -1 if there is none.
qsizetype endOfTag(QByteArrayView text) {
    char quote = 0;
    for (qsizetype index = 0; index < text.size(); ++index) {
        const char byte = text[index];
        if (quote != 0)
            quote = byte == quote ? '\0' : quote;
        else if (byte == '"' || byte == '\'')
            quote = byte;
        else if (byte == '>')
            return index;
    }
    return -1;
}

} // namespace

XmlPiece XmlPieces::next() {
    while (!rest_.isEmpty()) {
        if (!rest_.startsWith('<'))
            return text();
        if (rest_.startsWith("<![CDATA["))
            return characterData();
        if (rest_.startsWith("<!--"))
            takeThrough("-->");
        else if (rest_.startsWith("<?"))
            takeThrough("?>");
        else if (!rest_.startsWith("<!"))
            return tag();
        else if (takeThrough(">").contains('[')) // declarations could define entities
            rest_ = {};
    }
    return {};
}

XmlPiece XmlPieces::text() {
    const qsizetype markup = rest_.indexOf('<');
    const QByteArrayView raw = rest_.first(markup < 0 ? rest_.size() : markup);
    rest_ = rest_.sliced(raw.size());
    auto plain = withoutReferences(withLineFeeds(raw));
    return plain ? XmlPiece{XmlPiece::Text, {}, *plain} : XmlPiece();
}

XmlPiece XmlPieces::characterData() {
    constexpr qsizetype kStart = 9; // "<![CDATA["
    constexpr qsizetype kEnd = 3;   // "]]>"
    const QByteArrayView whole = takeThrough("]]>");
    if (whole.isEmpty())
        return {};
    return {XmlPiece::Text, {}, withLineFeeds(whole.sliced(kStart).chopped(kEnd))};
}

XmlPiece XmlPieces::tag() {
    const qsizetype end = endOfTag(rest_);
    if (end < 0)
        return {};
    QByteArrayView inner = rest_.sliced(1, end - 1);
    rest_ = rest_.sliced(end + 1);
    XmlPiece piece{XmlPiece::Start, {}, {}};
    if (inner.startsWith('/')) {
        piece.kind = XmlPiece::End;
        inner = inner.sliced(1);
    } else if (inner.endsWith('/')) {
        piece.kind = XmlPiece::Empty;
        inner.chop(1);
    }
    piece.name = inner.first(std::ranges::find_if(inner, isXmlBlank) - inner.begin());
    return piece.name.isEmpty() ? XmlPiece() : piece;
}

/// Takes everything through @p end. If @p end is missing, returns nothing and discards the rest.
QByteArrayView XmlPieces::takeThrough(QByteArrayView end) {
    const qsizetype at = rest_.indexOf(end);
    const QByteArrayView taken = at < 0 ? QByteArrayView() : rest_.first(at + end.size());
    rest_ = at < 0 ? QByteArrayView() : rest_.sliced(taken.size());
    return taken;
}

} // namespace MWCore
