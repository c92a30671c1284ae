// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "SixelEncoding.h"

#include "ColourPalette.h"

#include <algorithm>
#include <iterator>
#include <unordered_map>
#include <vector>

namespace MWCore::mwfile {
namespace {

constexpr int kBandRows = 6;
constexpr int kTransparent = -1;

// The registers before and after those of the picture are not used in it: some terminals show the
// first where nothing is drawn, and some forget the last definition.
constexpr int kFirstRegister = 1;
constexpr int kRegistersLeftOut = 2;

/// An image whose pixels are indexes of a palette, or kTransparent.
struct IndexedImage {
    int width;
    int height;
    std::vector<QRgb> palette;
    std::vector<int> indexes; ///< row by row

    /// Transparent below the image.
    [[nodiscard]] int at(int column, int row) const {
        const std::size_t begin = static_cast<std::size_t>(row) * static_cast<std::size_t>(width);
        return row < height ? indexes[begin + static_cast<std::size_t>(column)] : kTransparent;
    }
};

/// An opaque pixel, or 0, for @p pixel, which is not premultiplied.
QRgb flattened(QRgb pixel, std::optional<QRgb> background) {
    constexpr int kMiddle = 128;
    constexpr int kOpaque = 255;
    const int alpha = qAlpha(pixel);
    if (alpha == 0 || (!background && alpha < kMiddle))
        return 0;
    const QRgb behind = background.value_or(pixel);
    const auto blended = [alpha](int above, int below) {
        return (above * alpha + below * (kOpaque - alpha) + kOpaque / 2) / kOpaque;
    };
    return qRgb(blended(qRed(pixel), qRed(behind)), blended(qGreen(pixel), qGreen(behind)),
                blended(qBlue(pixel), qBlue(behind)));
}

std::vector<QRgb> flattenedPixels(const QImage &image, std::optional<QRgb> background) {
    const QImage pixels = image.convertToFormat(QImage::Format_ARGB32);
    std::vector<QRgb> result;
    for (int row = 0; row < pixels.height(); ++row) {
        const auto *const line = reinterpret_cast<const QRgb *>(pixels.constScanLine(row));
        std::transform(line, line + pixels.width(), std::back_inserter(result),
                       [&](QRgb pixel) { return flattened(pixel, background); });
    }
    return result;
}

int nearest(const std::vector<QRgb> &palette, QRgb wanted) {
    const auto distance = [wanted](QRgb colour) {
        const int red = qRed(colour) - qRed(wanted);
        const int green = qGreen(colour) - qGreen(wanted);
        const int blue = qBlue(colour) - qBlue(wanted);
        return red * red + green * green + blue * blue;
    };
    return static_cast<int>(std::ranges::min_element(palette, {}, distance) - palette.begin());
}

IndexedImage indexed(const QImage &image, const SixelLimits &limits) {
    const std::vector<QRgb> pixels = flattenedPixels(image, limits.background);
    std::vector<QRgb> visible;
    std::ranges::copy_if(pixels, std::back_inserter(visible),
                         [](QRgb pixel) { return pixel != 0; });
    IndexedImage result = {image.width(), image.height(), {}, {}};
    result.palette =
        paletteFor(std::move(visible), std::max(limits.registers - kRegistersLeftOut, 1));
    std::unordered_map<QRgb, int> known = {{0, kTransparent}};
    for (const QRgb pixel : pixels) {
        const auto [entry, isNew] = known.try_emplace(pixel);
        if (isNew)
            entry->second = nearest(result.palette, pixel);
        result.indexes.push_back(entry->second);
    }
    return result;
}

std::string registerText(int colour) {
    return "#" + std::to_string(colour + kFirstRegister);
}

/// "#7;2;100;50;0": the channels are in percent.
std::string definition(int colour, QRgb value) {
    constexpr int kWhole = 100;
    constexpr int kMost = 255;
    const auto percent = [](int channel) {
        return ";" + std::to_string((channel * kWhole + kMost / 2) / kMost);
    };
    return registerText(colour) + ";2" + percent(qRed(value)) + percent(qGreen(value)) +
           percent(qBlue(value));
}

std::string definitions(const std::vector<QRgb> &palette, std::optional<QRgb> background) {
    std::string text = background ? definition(kTransparent, *background) : "";
    int colour = 0;
    for (const QRgb value : palette)
        text += definition(colour++, value);
    return text + definition(colour, 0);
}

/// A run of equal characters; a long one as "!count".
void appendRun(std::string &text, char character, int count) {
    constexpr int kShortest = 4;
    if (count >= kShortest)
        text += "!" + std::to_string(count) + character;
    else
        text.append(static_cast<std::size_t>(count), character);
}

/// The character of six pixels, the uppermost the lowest bit, that shows which have a colour.
char sixelOf(const IndexedImage &image, int column, int firstRow, int colour) {
    int bits = 0;
    for (int row = 0; row < kBandRows; ++row)
        bits |= (image.at(column, firstRow + row) == colour ? 1 : 0) << row;
    return static_cast<char>('?' + bits);
}

/// The pixels of one colour in six rows. Returns to the left border.
void appendColour(std::string &text, const IndexedImage &image, int firstRow, int colour) {
    char character = sixelOf(image, 0, firstRow, colour);
    int count = 1;
    text += registerText(colour);
    for (int column = 1; column < image.width; ++column, ++count) {
        const char next = sixelOf(image, column, firstRow, colour);
        if (next == character)
            continue;
        appendRun(text, character, count);
        character = next;
        count = 0;
    }
    if (character != '?')
        appendRun(text, character, count);
    text += "$";
}

std::vector<int> coloursInBand(const IndexedImage &image, int firstRow) {
    std::vector<int> colours;
    for (int row = firstRow; row < std::min(firstRow + kBandRows, image.height); ++row)
        for (int column = 0; column < image.width; ++column)
            colours.push_back(image.at(column, row));
    std::ranges::sort(colours);
    colours.erase(std::unique(colours.begin(), colours.end()), colours.end());
    std::erase(colours, kTransparent);
    return colours;
}

} // namespace

std::string encodeSixel(const QImage &image, const SixelLimits &limits) {
    const IndexedImage pixels = indexed(image, limits);
    // Square pixels; those that are not drawn stay as they are.
    std::string text = "\033P0;1;0q\"1;1;" + std::to_string(pixels.width) + ";" +
                       std::to_string(pixels.height) +
                       definitions(pixels.palette, limits.background);
    for (int row = 0; row < pixels.height; row += kBandRows) {
        if (row > 0)
            text += "-";
        for (const int colour : coloursInBand(pixels, row))
            appendColour(text, pixels, row, colour);
    }
    return text + "\033\\";
}

} // namespace MWCore::mwfile
