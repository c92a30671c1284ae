// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "icons/IconImage.h"

#include "platform/formats/icns/IconElements.h"

#include <algorithm>
#include <tuple>

namespace MWCore {
namespace {

/// How many colours an element can have, as a rank.
int colourRank(uint32_t type) {
    const IconElementType *const known = iconElementType(type);
    switch (known ? known->encoding : IconEncoding::Other) {
    case IconEncoding::Plain:
    case IconEncoding::Bitmap:
        return 0;
    case IconEncoding::Indexed4:
        return 1;
    case IconEncoding::Indexed8:
        return 2;
    default:
        return 3;
    }
}

} // namespace

QImage IconImage::bestImage(int width) const {
    // Large enough first; then the smallest of those, or the largest of the others; then colours.
    const auto order = [width](const Representation &one) {
        const bool isLarge = one.image.width() >= width;
        const int size = isLarge ? one.image.width() : -one.image.width();
        return std::tuple(!isLarge, size, -colourRank(one.type));
    };
    const auto best = std::ranges::min_element(representations, {}, order);
    return best == representations.end() ? QImage() : best->image;
}

} // namespace MWCore
