// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <algorithm>

#include <QByteArrayView>

namespace MWCore {

/// Whether every byte is 0, as in an empty view.
[[nodiscard]] inline bool isZero(QByteArrayView bytes) {
    return std::ranges::all_of(bytes, [](char byte) { return byte == 0; });
}

} // namespace MWCore
