// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/PropertyList.h"

#include "platform/formats/PropertyListReaders.h"

#include <QStringDecoder>

namespace MWCore {

QVariant readPropertyList(QByteArrayView bytes) {
    if (bytes.startsWith("bplist0"))
        return readBinaryPropertyList(bytes);
    const auto encoding =
        QStringConverter::encodingForData(bytes, u'<').value_or(QStringConverter::Utf8);
    if (encoding != QStringConverter::Utf8)
        return readXmlPropertyList(QString(QStringDecoder(encoding).decode(bytes)).toUtf8());
    constexpr QByteArrayView kByteOrderMark = "\xEF\xBB\xBF";
    return readXmlPropertyList(
        bytes.startsWith(kByteOrderMark) ? bytes.sliced(kByteOrderMark.size()) : bytes);
}

} // namespace MWCore
