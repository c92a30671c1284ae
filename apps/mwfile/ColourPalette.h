// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <vector>

#include <QRgb>

namespace MWCore::mwfile {

/// At most @p most colours that represent @p pixels, which are reordered. Alpha is ignored. The
/// colours are divided along the channel in which they differ most, at their mean.
[[nodiscard]] std::vector<QRgb> paletteFor(std::vector<QRgb> pixels, int most);

} // namespace MWCore::mwfile
