// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "PictureLayout.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace MWCore::mwfile {
namespace {

constexpr int kMargin = 2; // columns on the left of the picture

/// A control sequence of ECMA-48 with one parameter.
std::string control(int parameter, char function) {
    return "\033[" + std::to_string(parameter) + function;
}

/// Draws into rows that are free, since the terminal scrolls before. Returns to the first of them.
std::string drawn(const std::string &drawing, const PictureRoom &room) {
    constexpr std::string_view kSaveCursor = "\0337";
    constexpr std::string_view kRestoreCursor = "\0338";
    const int rows = room.rows + 1; // the cursor may go to the one below
    std::string text(static_cast<std::size_t>(rows), '\n');
    text.append(control(rows, 'A')).append(kSaveCursor).append(control(kMargin, 'C'));
    return text.append(drawing).append(kRestoreCursor);
}

} // namespace

std::string withPicture(const std::string &drawing, const PictureRoom &room,
                        const LabelledLines &lines, int columns) {
    constexpr int kNarrowest = 40;
    const int indent = kMargin + room.columns;
    const bool isBeside = columns - indent >= kNarrowest;
    std::string text = drawn(drawing, room);
    if (!isBeside)
        text.append(static_cast<std::size_t>(room.rows), '\n');
    std::vector<std::string> texts = lines.wrapped(isBeside ? columns - indent : columns);
    if (isBeside)
        texts.resize(std::max(texts.size(), static_cast<std::size_t>(room.rows)));
    for (const std::string &line : texts) {
        if (isBeside && !line.empty())
            text += control(indent, 'C'); // spaces would erase the picture
        text += line + "\n";
    }
    return text;
}

} // namespace MWCore::mwfile
