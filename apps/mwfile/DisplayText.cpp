// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "DisplayText.h"

#include "TextReader.h"

#include <algorithm>
#include <cstdio>
#include <cwchar>

namespace MWCore::mwfile {
namespace {

std::string escaped(const char *format, char32_t value) {
    char text[16];
    std::snprintf(text, sizeof text, format, static_cast<unsigned>(value));
    return text;
}

/// The escape sequence for @p step; empty if the character can be printed.
std::string escapeFor(const TextStep &step, Backslash backslash) {
    if (!step.valid)
        return escaped("\\x%02x", step.character);
    switch (step.character) {
    case U'\\':
        return backslash == Backslash::Doubled ? "\\\\" : "";
    case U'\n':
        return "\\n";
    case U'\r':
        return "\\r";
    case U'\t':
        return "\\t";
    case U'\x1b':
        return "\\e";
    default:
        return isControl(step.character) ? escaped("\\u{%x}", step.character) : "";
    }
}

/// 1 if the system's tables do not contain the character.
int columnsOf(char32_t character) {
    const int columns = wcwidth(static_cast<wchar_t>(character));
    return columns < 0 ? 1 : columns;
}

bool isPlain(std::string_view text) {
    return std::ranges::all_of(text, [](char character) {
        return character >= ' ' && character <= '~' && character != '\\';
    });
}

} // namespace

DisplayText::DisplayText(std::string_view raw, Backslash backslash) {
    if (isPlain(raw)) {
        append(raw, static_cast<int>(raw.size()));
        return;
    }
    TextReader reader(raw);
    while (const auto step = reader.next()) {
        const std::string escape = escapeFor(*step, backslash);
        if (escape.empty())
            append(step->bytes, columnsOf(step->character));
        else
            append(escape, static_cast<int>(escape.size()));
    }
}

void DisplayText::append(std::string_view printable, int columns) {
    text_ += printable;
    columns_ += columns;
}

} // namespace MWCore::mwfile
