// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <optional>

#include <QByteArrayView>
#include <QImage>

namespace MWCore {

/// Decodes a PNG of the form that most icons have, 8-bit RGBA in sRGB, not interlaced, to
/// QImage::Format_RGBA8888, in a third of Qt's time. nullopt for any other PNG and for one with any
/// defect: Qt may be able to read it. Any thread.
[[nodiscard]] std::optional<QImage> decodePlainPng(QByteArrayView bytes);

} // namespace MWCore
