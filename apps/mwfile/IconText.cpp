// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "IconText.h"

#include "SizeText.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <iterator>
#include <span>

namespace MWCore::mwfile {
namespace {

struct EncodingRow {
    IconEncoding encoding;
    const char *text;
};
constexpr EncodingRow kEncodingRows[] = {
    {IconEncoding::Rgb, "RGB"},
    {IconEncoding::PaddedRgb, "RGB"},
    {IconEncoding::Mask, "mask"},
    {IconEncoding::Bitmap, "1-bit icon and mask"},
    {IconEncoding::Plain, "1-bit icon"},
    {IconEncoding::Indexed4, "16 colours"},
    {IconEncoding::Indexed8, "256 colours"},
    {IconEncoding::Argb, "ARGB"},
    {IconEncoding::File, "PNG or JPEG 2000"},
    {IconEncoding::Family, "variant"},
    {IconEncoding::Other, "other data"},
};

struct TypeRow {
    uint32_t type;
    const char *text;
};
constexpr TypeRow kDataRows[] = {
    {kTableOfContentsType, "table of contents"},
    {fourCharCode("icnV"), "version"},
    {fourCharCode("name"), "name"},
    {fourCharCode("info"), "information"},
};
constexpr TypeRow kFamilyRows[] = {
    {kDarkFamilyType, "dark"},
    {fourCharCode("slct"), "selected"},
    {fourCharCode("sbtp"), "template"},
};

std::string textIn(std::span<const TypeRow> rows, uint32_t type, const std::string &otherwise) {
    const auto row = std::ranges::find(rows, type, &TypeRow::type);
    return row == rows.end() ? otherwise : row->text;
}

std::string encodingText(IconEncoding encoding) {
    const auto *const row = std::ranges::find(kEncodingRows, encoding, &EncodingRow::encoding);
    return row == std::end(kEncodingRows) ? "" : row->text;
}

} // namespace

std::string elementTypeText(uint32_t type) {
    std::string characters;
    for (int shift = 24; shift >= 0; shift -= 8)
        characters += static_cast<char>(type >> shift & 0xFF);
    const bool isPrintable = std::ranges::all_of(
        characters, [](char character) { return character >= ' ' && character <= '~'; });
    if (isPrintable)
        return characters;
    std::array<char, 16> number{};
    std::snprintf(number.data(), number.size(), "0x%08X", static_cast<unsigned>(type));
    return number.data();
}

std::string imageSizeText(QSize pixels, int scale, const std::string &by) {
    return std::to_string(pixels.width() / scale) + by + std::to_string(pixels.height() / scale) +
           (scale == 1 ? "" : "@" + std::to_string(scale) + "x");
}

std::string payloadText(const IconElementReport &element) {
    switch (element.storage) {
    case IconStorage::Png:
        return "PNG";
    case IconStorage::Jpeg2000:
        return "JPEG 2000";
    case IconStorage::Compressed:
        return encodingText(element.encoding) + ", compressed";
    case IconStorage::Uncompressed:
        return encodingText(element.encoding) + ", uncompressed";
    case IconStorage::Family:
        return nestedFamilyName(element.type) + " variant";
    default:
        return textIn(kDataRows, element.type, encodingText(element.encoding));
    }
}

std::string nestedFamilyName(uint32_t type) {
    return textIn(kFamilyRows, type, elementTypeText(type));
}

std::vector<std::string> problemTexts(const IconFamilyReport &report) {
    std::vector<std::string> problems;
    if (!report.problem.isEmpty())
        problems.push_back(report.problem.toStdString());
    for (const IconElementReport &element : report.elements)
        if (!element.problem.isEmpty())
            problems.push_back(elementTypeText(element.type) + " " + element.problem.toStdString());
    return problems;
}

std::string countedText(std::size_t count, const std::string &what) {
    return groupedDigits(static_cast<int64_t>(count)) + " " + what + (count == 1 ? "" : "s");
}

} // namespace MWCore::mwfile
