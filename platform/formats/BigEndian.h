// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <concepts>
#include <cstdint>
#include <optional>

#include <QByteArray>
#include <QByteArrayView>
#include <QtEndian>

/// Big-endian numbers in untrusted bytes. Every read is checked against the bytes' end.
namespace MWCore {

/// The @p length bytes from @p offset on; nullopt if they do not all exist.
[[nodiscard]] inline std::optional<QByteArrayView> bytesAt(QByteArrayView bytes, uint64_t offset,
                                                           uint64_t length) {
    const auto size = static_cast<uint64_t>(bytes.size());
    if (offset > size || length > size - offset)
        return std::nullopt;
    return bytes.sliced(static_cast<qsizetype>(offset), static_cast<qsizetype>(length));
}

/// The number at @p offset; nullopt if it extends beyond the end of the bytes.
template <std::integral Number>
[[nodiscard]] std::optional<Number> numberAt(QByteArrayView bytes, uint64_t offset) {
    const auto there = bytesAt(bytes, offset, sizeof(Number));
    return there ? std::optional(qFromBigEndian<Number>(there->data())) : std::nullopt;
}

/// Overwrites the number at @p offset, where all its bytes must exist.
template <std::integral Number> void putNumber(QByteArray &bytes, qsizetype offset, Number number) {
    qToBigEndian(number, bytes.data() + offset);
}

template <std::integral Number> void appendNumber(QByteArray &bytes, Number number) {
    char text[sizeof(Number)];
    qToBigEndian(number, text);
    bytes.append(text, sizeof text);
}

} // namespace MWCore
