// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mwcore_export.h>

#include <cstdint>
#include <vector>

#include <QImage>

namespace MWCore {

/// An image in several sizes. A plain value.
struct MWCORE_EXPORT IconImage {
    struct Representation {
        uint32_t type; ///< of the element that it was made of
        QImage image;  ///< device pixel ratio 1
    };
    std::vector<Representation> representations;

    [[nodiscard]] bool isNull() const { return representations.empty(); }

    /// The best representation for a square of @p width pixels: the smallest one that is at least
    /// as large, else the largest one, and among several the one with the most colours. It is not
    /// scaled. Null if there is none.
    [[nodiscard]] QImage bestImage(int width) const;
};

} // namespace MWCore
