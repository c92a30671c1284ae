// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <string_view>

namespace MWCore {

/// Where the core's memory comes from; arrays grow through realloc(). The label says at the call
/// site what it is for.
[[nodiscard]] inline void *Malloc(std::size_t size, [[maybe_unused]] const char *label) {
    return std::malloc(size);
}

struct Free {
    void operator()(void *block) const { std::free(block); }
};

/// An owned, NUL-terminated text that a C caller may free; null when memory ran out.
using Text = std::unique_ptr<char, Free>;

/// The parts one after the other.
[[nodiscard]] inline Text joined(std::initializer_list<std::string_view> parts, const char *label) {
    std::size_t length = 0;
    for (const std::string_view part : parts)
        length += part.size();
    Text text(static_cast<char *>(Malloc(length + 1, label)));
    if (!text)
        return text;
    char *end = text.get();
    for (const std::string_view part : parts) {
        std::memcpy(end, part.data(), part.size());
        end += part.size();
    }
    *end = '\0';
    return text;
}

/// The path of an item in a folder.
[[nodiscard]] inline Text joinedPath(std::string_view folder, std::string_view item,
                                     const char *label) {
    return joined({folder, folder.ends_with('/') ? "" : "/", item}, label);
}

[[nodiscard]] inline Text copied(std::string_view text, const char *label) {
    return joined({text}, label);
}

} // namespace MWCore
