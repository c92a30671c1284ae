// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "WrappedText.h"

#include "Colours.h"
#include "TextReader.h"

#include <algorithm>

namespace MWCore::mwfile {
namespace {

/// The bytes of the first line of @p text, which is wider than a line. A style takes no columns.
std::size_t firstLineLength(std::string_view text, int columns) {
    constexpr char32_t kStyleBegin = U'\033';
    constexpr char32_t kStyleEnd = U'm';
    TextReader reader(text);
    std::size_t length = 0;
    std::size_t lastSpaceEnd = 0;
    bool isStyle = false;
    while (const auto step = reader.next()) {
        isStyle = isStyle || step->character == kStyleBegin;
        columns -= isStyle ? 0 : columnsOf(step->bytes);
        if (columns < 0 && length > 0)
            break;
        length += step->bytes.size();
        if (!isStyle && step->character == U' ')
            lastSpaceEnd = length;
        isStyle = isStyle && step->character != kStyleEnd;
    }
    return lastSpaceEnd > 0 ? lastSpaceEnd : length;
}

} // namespace

std::vector<std::string> wrappedText(std::string_view text, int columns) {
    std::vector<std::string> lines;
    while (columnsOf(text) > columns && !text.empty()) {
        const std::size_t length = firstLineLength(text, columns);
        lines.emplace_back(text.substr(0, length));
        text.remove_prefix(length);
    }
    if (!text.empty() || lines.empty())
        lines.emplace_back(text);
    return lines;
}

} // namespace MWCore::mwfile
