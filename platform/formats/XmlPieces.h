// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <QByteArray>
#include <QByteArrayView>

namespace MWCore {

[[nodiscard]] constexpr bool isXmlBlank(char byte) {
    return byte == ' ' || byte == '\t' || byte == '\n' || byte == '\r';
}

struct XmlPiece {
    enum Kind { Start, End, Empty, Text, Damage };

    Kind kind = Damage;  ///< Damage also marks the end of the document
    QByteArrayView name; ///< of a tag
    QByteArray text;     ///< references and CDATA resolved, line ends as LF
};

/// Iterates over the tags and texts of an XML document in UTF-8. Comments, instructions and
/// attributes are skipped; a document type with declarations counts as damage, so there are no
/// entities but the predefined ones. One pass over any document.
class XmlPieces {
public:
    explicit XmlPieces(QByteArrayView document) : rest_(document) {}

    [[nodiscard]] XmlPiece next();

private:
    XmlPiece text();
    XmlPiece characterData();
    XmlPiece tag();
    QByteArrayView takeThrough(QByteArrayView end);

    QByteArrayView rest_;
};

} // namespace MWCore
