// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <optional>
#include <string>

#include <QImage>
#include <QRgb>

namespace MWCore::mwfile {

/// What a terminal can show.
struct SixelLimits {
    int registers = 256;            ///< of colours
    std::optional<QRgb> background; ///< translucent pixels are blended with it
};

/// @p image as a sixel picture (DEC STD 070), which a terminal draws at the cursor. Transparent
/// pixels show what is behind them. Without a background, translucent ones are drawn opaque or not
/// at all.
[[nodiscard]] std::string encodeSixel(const QImage &image, const SixelLimits &limits);

} // namespace MWCore::mwfile
