// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <optional>

#include <QByteArray>
#include <QByteArrayView>

namespace MWCore {

/// The longest text that is decompressed, in bytes. A URI of the longest path takes 12,300.
inline constexpr qsizetype kLongestPngText = 16'384;

/// The text of a PNG with @p keyword, from the chunk tEXt, zTXt or iTXt (ISO/IEC 15948), as its
/// bytes. nullopt if it has none before its end, or if the first one is damaged or too long. Any
/// thread.
[[nodiscard]] std::optional<QByteArray> pngText(QByteArrayView png, QByteArrayView keyword);

} // namespace MWCore
