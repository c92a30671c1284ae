// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdlib>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <string_view>

namespace MWCore {

/// Allocates all memory of the core, except that arrays grow through realloc(). @p label names the
/// purpose at the call site.
[[nodiscard]] inline void *allocate(std::size_t size, [[maybe_unused]] const char *label) {
    return std::malloc(size);
}

struct Free {
    void operator()(void *block) const { std::free(block); }
};

/// An owned, NUL-terminated text that C code can free; null if memory ran out.
using Text = std::unique_ptr<char, Free>;

/// Concatenates the parts.
[[nodiscard]] inline Text joined(std::initializer_list<std::string_view> parts, const char *label) {
    std::size_t length = 0;
    for (const std::string_view part : parts)
        length += part.size();
    Text text(static_cast<char *>(allocate(length + 1, label)));
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

/// Joins a folder's path and an item's name with one "/".
[[nodiscard]] inline Text joinedPath(std::string_view folder, std::string_view item,
                                     const char *label) {
    return joined({folder, folder.ends_with('/') ? "" : "/", item}, label);
}

[[nodiscard]] inline Text copied(std::string_view text, const char *label) {
    return joined({text}, label);
}

} // namespace MWCore
