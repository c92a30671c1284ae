// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/foundation/FileSystemText.h"

#include "platform/foundation/Utf8.h"

#include <algorithm>

namespace MWCore {
namespace {

/// The lone surrogate U+DCNN carries the byte 0xNN, which is never ASCII.
constexpr char16_t kByteCarrier = 0xDC00;

bool carriesByte(char16_t unit) {
    return unit >= kByteCarrier + 0x80 && unit <= kByteCarrier + 0xFF;
}

void appendUtf8(QByteArray &bytes, char32_t character) {
    const auto last = [character](int shift) {
        return static_cast<char>(0x80 | ((character >> shift) & 0x3F));
    };
    if (character < 0x80) {
        bytes += static_cast<char>(character);
    } else if (character < 0x800) {
        bytes += static_cast<char>(0xC0 | (character >> 6));
        bytes += last(0);
    } else if (character < 0x10000) {
        bytes += static_cast<char>(0xE0 | (character >> 12));
        bytes += last(6);
        bytes += last(0);
    } else {
        bytes += static_cast<char>(0xF0 | (character >> 18));
        bytes += last(12);
        bytes += last(6);
        bytes += last(0);
    }
}

} // namespace

QString stringWithFileSystemRepresentation(QByteArrayView representation) {
    if (representation.isNull())
        return {};
    const auto isAscii = [](char byte) { return static_cast<signed char>(byte) >= 0; };
    const auto *const firstOther =
        std::find_if_not(representation.begin(), representation.end(), isAscii);
    QString text = QString::fromLatin1(representation.first(firstOther - representation.begin()));
    if (text.isNull())
        text = QLatin1String("");
    std::string_view rest(firstOther, static_cast<std::size_t>(representation.end() - firstOther));
    text.reserve(representation.size());
    while (!rest.empty()) {
        const Utf8Step step = nextStep(rest);
        rest.remove_prefix(step.bytes.size());
        if (!step.valid)
            text += QChar(static_cast<char16_t>(kByteCarrier + step.character));
        else if (QChar::requiresSurrogates(step.character))
            (text += QChar(QChar::highSurrogate(step.character))) +=
                QChar(QChar::lowSurrogate(step.character));
        else
            text += QChar(static_cast<char16_t>(step.character));
    }
    return text;
}

std::optional<QByteArray> fileSystemRepresentation(const QString &text) {
    const auto isUsual = [](QChar unit) { return !unit.isNull() && !unit.isSurrogate(); };
    if (std::all_of(text.begin(), text.end(), isUsual))
        return text.toUtf8();
    QByteArray bytes;
    bytes.reserve(text.size() + 1);
    for (qsizetype index = 0; index < text.size(); ++index) {
        const char16_t unit = text[index].unicode();
        if (unit == 0)
            return std::nullopt;
        if (!QChar::isSurrogate(unit)) {
            appendUtf8(bytes, unit);
        } else if (QChar::isHighSurrogate(unit) && index + 1 < text.size() &&
                   text[index + 1].isLowSurrogate()) {
            appendUtf8(bytes, QChar::surrogateToUcs4(unit, text[++index].unicode()));
        } else if (carriesByte(unit)) {
            bytes += static_cast<char>(unit - kByteCarrier);
        } else {
            return std::nullopt;
        }
    }
    return bytes;
}

QByteArray cString(const QString &text) {
    const QString untilNull = text.left(text.indexOf(QChar::Null));
    const auto bytes = fileSystemRepresentation(untilNull);
    return bytes ? *bytes : untilNull.toUtf8();
}

} // namespace MWCore
