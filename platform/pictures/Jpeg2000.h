// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <optional>

#include <QByteArrayView>
#include <QImage>
#include <QSize>

/// JPEG 2000 (ISO/IEC 15444-1) within bounds: a JP2 file or a bare codestream. Any thread.
namespace MWCore {

[[nodiscard]] bool isJpeg2000(QByteArrayView bytes);

/// The size in pixels that the codestream's header declares; nullopt if there is no such header.
[[nodiscard]] std::optional<QSize> jpeg2000Size(QByteArrayView bytes);

/// Decodes an image of exactly @p size pixels with one to four components (gray, gray and alpha,
/// RGB, RGBA) to QImage::Format_RGBA8888, not premultiplied. nullopt if it has another size or
/// more tiles or components than an icon needs, which is checked before anything is decoded, or is
/// damaged. A truncated codestream yields what could be decoded of it.
[[nodiscard]] std::optional<QImage> decodeJpeg2000(QByteArrayView bytes, QSize size);

} // namespace MWCore
