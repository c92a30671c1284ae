// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/PropertyListReaders.h"

#include "platform/formats/PropertyList.h"
#include "platform/formats/XmlPieces.h"
#include "platform/foundation/FileSystemText.h"

#include <algorithm>
#include <optional>

#include <QDateTime>

namespace MWCore {
namespace {

QVariant trueOf(const QByteArray & /*text*/) {
    return true;
}

QVariant falseOf(const QByteArray & /*text*/) {
    return false;
}

QVariant stringOf(const QByteArray &text) {
    return stringWithFileSystemRepresentation(text);
}

/// Decimal, or hexadecimal with "0x".
QVariant integerOf(const QByteArray &text) {
    const QByteArray digits = text.trimmed();
    const int base = digits.contains('x') || digits.contains('X') ? 16 : 10;
    bool fits = false;
    if (const qlonglong number = digits.toLongLong(&fits, base); fits)
        return number;
    const qulonglong number = digits.toULongLong(&fits, base);
    return fits ? QVariant(number) : QVariant();
}

QVariant realOf(const QByteArray &text) {
    bool fits = false;
    const double number = text.trimmed().toDouble(&fits);
    return fits ? QVariant(number) : QVariant();
}

QVariant dateOf(const QByteArray &text) {
    const QByteArray date = text.trimmed();
    const QDateTime time = QDateTime::fromString(QString::fromLatin1(date), Qt::ISODate);
    return date.endsWith('Z') && time.isValid() ? QVariant(time) : QVariant();
}

QVariant dataOf(const QByteArray &text) {
    QByteArray digits = text;
    digits.removeIf(isXmlBlank);
    const auto decoded =
        QByteArray::fromBase64Encoding(digits, QByteArray::AbortOnBase64DecodingErrors);
    return decoded ? QVariant(*decoded) : QVariant();
}

struct ScalarRow {
    QByteArrayView element;
    QVariant (*make)(const QByteArray &text);
};
constexpr ScalarRow kScalarRows[] = {
    {"true", trueOf}, {"false", falseOf}, {"string", stringOf}, {"integer", integerOf},
    {"real", realOf}, {"date", dateOf},   {"data", dataOf},
};

/// Reads values from the pieces of a list. If one value is damaged, reading the list fails.
class XmlReader {
public:
    explicit XmlReader(QByteArrayView bytes) : pieces_(bytes) {}

    QVariant read();

private:
    QVariant value(const XmlPiece &start, int depth);
    QVariant array(int depth);
    QVariant dictionary(int depth);
    std::optional<QByteArray> text(const XmlPiece &start);
    XmlPiece nextTag();

    XmlPieces pieces_;
};

QVariant XmlReader::read() {
    const XmlPiece root = nextTag();
    if (root.kind != XmlPiece::Start || root.name != "plist")
        return {};
    const QVariant top = value(nextTag(), 0);
    const XmlPiece end = nextTag();
    return end.kind == XmlPiece::End && end.name == root.name ? top : QVariant();
}

QVariant XmlReader::value(const XmlPiece &start, int depth) {
    const bool isEmpty = start.kind == XmlPiece::Empty;
    if (!isEmpty && start.kind != XmlPiece::Start)
        return {};
    if (depth >= kPropertyListDepth && (start.name == "array" || start.name == "dict"))
        return {};
    if (start.name == "array")
        return isEmpty ? QVariantList() : array(depth);
    if (start.name == "dict")
        return isEmpty ? QVariantMap() : dictionary(depth);
    const auto *const row = std::ranges::find(kScalarRows, start.name, &ScalarRow::element);
    const auto content = row == std::end(kScalarRows) ? std::nullopt : text(start);
    return content ? row->make(*content) : QVariant();
}

/// Reads from after the start tag through the end tag.
QVariant XmlReader::array(int depth) {
    QVariantList values;
    XmlPiece piece = nextTag();
    for (; piece.kind != XmlPiece::End; piece = nextTag()) {
        const QVariant found = value(piece, depth + 1);
        if (!found.isValid())
            return {};
        values += found;
    }
    return piece.name == "array" ? QVariant(values) : QVariant();
}

QVariant XmlReader::dictionary(int depth) {
    QVariantMap values;
    XmlPiece piece = nextTag();
    for (; piece.kind != XmlPiece::End; piece = nextTag()) {
        const auto key = piece.name == "key" ? text(piece) : std::nullopt;
        const QVariant found = key ? value(nextTag(), depth + 1) : QVariant();
        if (!found.isValid())
            return {};
        values.insert(stringWithFileSystemRepresentation(*key), found);
    }
    return piece.name == "dict" ? QVariant(values) : QVariant();
}

/// The text of the element that @p start opens; nullopt if it contains other elements.
std::optional<QByteArray> XmlReader::text(const XmlPiece &start) {
    QByteArray content = "";
    if (start.kind == XmlPiece::Empty)
        return content;
    XmlPiece piece = pieces_.next();
    for (; piece.kind == XmlPiece::Text; piece = pieces_.next())
        content += piece.text;
    if (piece.kind != XmlPiece::End || piece.name != start.name)
        return std::nullopt;
    return content;
}

/// The next tag within a container, where only blanks may be between tags.
XmlPiece XmlReader::nextTag() {
    XmlPiece piece = pieces_.next();
    while (piece.kind == XmlPiece::Text && std::ranges::all_of(piece.text, isXmlBlank))
        piece = pieces_.next();
    return piece;
}

} // namespace

QVariant readXmlPropertyList(QByteArrayView bytes) {
    return XmlReader(bytes).read();
}

} // namespace MWCore
