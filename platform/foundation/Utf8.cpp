// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/foundation/Utf8.h"

namespace MWCore {
namespace {

/// The encoding of the characters of one length (RFC 3629, section 3).
struct Length {
    unsigned char mask; ///< the bits of the first byte that encode the length
    unsigned char lead; ///< the value of those bits
    std::size_t bytes;
    char32_t smallest; ///< of a form that is not overlong
};
constexpr Length kLengths[] = {
    {0x80, 0x00, 1, 0x0},
    {0xE0, 0xC0, 2, 0x80},
    {0xF0, 0xE0, 3, 0x800},
    {0xF8, 0xF0, 4, 0x10000},
};

unsigned char byteAt(std::string_view text, std::size_t index) {
    return static_cast<unsigned char>(text[index]);
}

} // namespace

Utf8Step nextStep(std::string_view text) {
    const unsigned char first = byteAt(text, 0);
    const Utf8Step invalid = {text.substr(0, 1), first, false};
    for (const Length &length : kLengths) {
        if ((first & length.mask) != length.lead)
            continue;
        if (text.size() < length.bytes)
            return invalid;
        auto character = static_cast<char32_t>(first & ~length.mask);
        for (std::size_t index = 1; index < length.bytes; ++index) {
            const unsigned char next = byteAt(text, index);
            if ((next & 0xC0) != 0x80)
                return invalid;
            character = character << 6 | (next & 0x3F);
        }
        const bool isSurrogate = character >= 0xD800 && character <= 0xDFFF;
        if (character < length.smallest || character > 0x10FFFF || isSurrogate)
            return invalid;
        return {text.substr(0, length.bytes), character, true};
    }
    return invalid;
}

} // namespace MWCore
