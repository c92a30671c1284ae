// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <optional>

#include <QByteArray>
#include <QByteArrayView>
#include <QImage>
#include <QSize>

/// PNG (ISO/IEC 15948) within bounds. Any thread.
namespace MWCore {

inline constexpr QByteArrayView kPngSignature("\x89PNG\r\n\x1a\n", 8);

[[nodiscard]] bool isPng(QByteArrayView bytes);

/// The size in pixels that the header declares; nullopt if @p bytes do not begin with a PNG header.
[[nodiscard]] std::optional<QSize> pngSize(QByteArrayView bytes);

/// Whether the chunks that define the colour space are kept.
enum class PngColour { Keep, Drop };

/// The file without the chunks that its pixels do not depend on, whose compressed texts could take
/// any amount of memory to read. Empty if it is truncated.
[[nodiscard]] QByteArray essentialPng(QByteArrayView bytes, PngColour colour);

/// Decodes a PNG of exactly @p size pixels to QImage::Format_RGBA8888, not premultiplied. nullopt
/// if it has another size, which is checked before anything is decoded, or is damaged.
[[nodiscard]] std::optional<QImage> decodePng(QByteArrayView bytes, QSize size);

} // namespace MWCore
