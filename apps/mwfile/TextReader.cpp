// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "TextReader.h"

#include <MWCore/FileSystemText.h>

#include <algorithm>

namespace MWCore::mwfile {
namespace {

struct Range {
    char32_t first;
    char32_t last;
};
constexpr Range kControls[] = {
    {0x0000, 0x001F}, // C0
    {0x007F, 0x009F}, // DEL and C1
    {0x061C, 0x061C}, // Arabic letter mark
    {0x200E, 0x200F}, // left-to-right and right-to-left mark
    {0x2028, 0x202E}, // line and paragraph separator, embeddings and overrides
    {0x2066, 0x2069}, // isolates
};

/// U+DCNN represents the invalid byte 0xNN.
constexpr char32_t kInvalidByteBase = 0xDC00;

/// The number of bytes in UTF-8.
std::size_t lengthOf(char32_t character) {
    return character < 0x80 ? 1 : character < 0x800 ? 2 : character < 0x10000 ? 3 : 4;
}

} // namespace

TextReader::TextReader(std::string_view text)
    : rest_(text), units_(stringWithFileSystemRepresentation(
                       QByteArrayView(text.data(), static_cast<qsizetype>(text.size())))) {}

std::optional<TextStep> TextReader::next() {
    if (index_ == units_.size())
        return std::nullopt;
    const QChar unit = units_[index_++];
    TextStep step = {{}, unit.unicode(), !unit.isLowSurrogate()};
    if (unit.isHighSurrogate())
        step.character = QChar::surrogateToUcs4(unit, units_[index_++]);
    else if (!step.valid)
        step.character -= kInvalidByteBase;
    step.bytes = rest_.substr(0, step.valid ? lengthOf(step.character) : 1);
    rest_.remove_prefix(step.bytes.size());
    return step;
}

bool isControl(char32_t character) {
    return std::ranges::any_of(kControls, [character](const Range &range) {
        return character >= range.first && character <= range.last;
    });
}

} // namespace MWCore::mwfile
