// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/icns/IconElements.h"

#include <algorithm>
#include <iterator>

namespace MWCore {
namespace {

using enum IconEncoding;

constexpr uint32_t code(const char (&text)[5]) {
    return fourCharCode(text);
}

// clang-format off
constexpr IconElementType kTypes[] = {
    // type          pixels          encoding   mask          scale
    {code("ICON"), {  32,   32}, Plain,     0,            1},
    {code("icm#"), {  16,   12}, Bitmap,    0,            1},
    {code("icm4"), {  16,   12}, Indexed4,  0,            1},
    {code("icm8"), {  16,   12}, Indexed8,  0,            1},
    {code("ics#"), {  16,   16}, Bitmap,    0,            1},
    {code("ics4"), {  16,   16}, Indexed4,  0,            1},
    {code("ics8"), {  16,   16}, Indexed8,  0,            1},
    {code("is32"), {  16,   16}, Rgb,       code("s8mk"), 1},
    {code("s8mk"), {  16,   16}, Mask,      0,            1},
    {code("ICN#"), {  32,   32}, Bitmap,    0,            1},
    {code("icl4"), {  32,   32}, Indexed4,  0,            1},
    {code("icl8"), {  32,   32}, Indexed8,  0,            1},
    {code("il32"), {  32,   32}, Rgb,       code("l8mk"), 1},
    {code("l8mk"), {  32,   32}, Mask,      0,            1},
    {code("ich#"), {  48,   48}, Bitmap,    0,            1},
    {code("ich4"), {  48,   48}, Indexed4,  0,            1},
    {code("ich8"), {  48,   48}, Indexed8,  0,            1},
    {code("ih32"), {  48,   48}, Rgb,       code("h8mk"), 1},
    {code("h8mk"), {  48,   48}, Mask,      0,            1},
    {code("it32"), { 128,  128}, PaddedRgb, code("t8mk"), 1},
    {code("t8mk"), { 128,  128}, Mask,      0,            1},
    {code("ic04"), {  16,   16}, Argb,      0,            1},
    {code("ic05"), {  32,   32}, Argb,      0,            1},
    {code("icsb"), {  18,   18}, Argb,      0,            1},
    {code("icsB"), {  36,   36}, File,      0,            2},
    {code("sb24"), {  24,   24}, File,      0,            1},
    {code("SB24"), {  48,   48}, File,      0,            2},
    {code("icp4"), {  16,   16}, File,      code("s8mk"), 1},
    {code("icp5"), {  32,   32}, File,      code("l8mk"), 1},
    {code("icp6"), {  64,   64}, File,      0,            1},
    {code("ic07"), { 128,  128}, File,      0,            1},
    {code("ic08"), { 256,  256}, File,      0,            1},
    {code("ic09"), { 512,  512}, File,      0,            1},
    {code("ic10"), {1024, 1024}, File,      0,            2},
    {code("ic11"), {  32,   32}, File,      0,            2},
    {code("ic12"), {  64,   64}, File,      0,            2},
    {code("ic13"), { 256,  256}, File,      0,            2},
    {code("ic14"), { 512,  512}, File,      0,            2},
    {kDarkFamilyType, {},        Family,    0,            1},
    {code("slct"),    {},        Family,    0,            1},
    {code("sbtp"),    {},        Family,    0,            1},
    {kTableOfContentsType, {},   Other,     0,            1},
    {code("icnV"),    {},        Other,     0,            1},
    {code("name"),    {},        Other,     0,            1},
    {code("info"),    {},        Other,     0,            1},
};
// clang-format on

} // namespace

std::span<const IconElementType> iconElementTypes() {
    return kTypes;
}

const IconElementType *iconElementType(uint32_t type) {
    const auto *const found = std::ranges::find(kTypes, type, &IconElementType::type);
    return found == std::end(kTypes) ? nullptr : found;
}

std::optional<qsizetype> fixedLength(const IconElementType &type) {
    constexpr qsizetype kPixelsPerByte = 8; // of one bit
    const qsizetype pixels = qsizetype(type.size.width()) * type.size.height();
    switch (type.encoding) {
    case Mask:
    case Indexed8:
        return pixels;
    case Indexed4:
        return pixels / 2;
    case Plain:
        return pixels / kPixelsPerByte;
    case Bitmap:
        return 2 * pixels / kPixelsPerByte;
    default:
        return std::nullopt;
    }
}

} // namespace MWCore
