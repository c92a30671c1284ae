// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <optional>
#include <string_view>

namespace MWCore {

/// Views into texts, on which the documented operations are built. What can throw
/// (`substr`, `starts_with` of a text) is not used: it would tie the core to the C++ runtime.

[[nodiscard]] constexpr std::string_view firstOf(std::string_view text, std::size_t count) {
    return {text.data(), count};
}

[[nodiscard]] constexpr std::string_view from(std::string_view text, std::size_t start) {
    return {text.data() + start, text.size() - start};
}

// Paths.

[[nodiscard]] constexpr bool isAbsolute(std::string_view path) {
    return path.starts_with('/');
}

/// What follows the last "/"; all of a path without any.
[[nodiscard]] constexpr std::string_view lastComponent(std::string_view path) {
    return from(path, path.rfind('/') + 1);
}

/// What stands before the last "/"; nothing for a path without any.
[[nodiscard]] constexpr std::string_view beforeLastSlash(std::string_view path) {
    const auto slash = path.rfind('/');
    return firstOf(path, slash == std::string_view::npos ? 0 : slash);
}

/// As beforeLastSlash(), but "/" for an item of the root folder.
[[nodiscard]] constexpr std::string_view containingFolder(std::string_view path) {
    return path.rfind('/') == 0 ? firstOf(path, 1) : beforeLastSlash(path);
}

// Names.

[[nodiscard]] constexpr std::string_view withoutFrontSpaces(std::string_view text) {
    const auto start = text.find_first_not_of(' ');
    return from(text, start == std::string_view::npos ? text.size() : start);
}

[[nodiscard]] constexpr std::string_view withoutBackSpaces(std::string_view text) {
    return firstOf(text, text.find_last_not_of(" \r\n") + 1);
}

/// What follows the last dot, unless that is the first character.
[[nodiscard]] constexpr std::optional<std::string_view> extensionOf(std::string_view name) {
    const std::string_view trimmed = withoutBackSpaces(name);
    const auto dot = trimmed.rfind('.');
    if (dot == std::string_view::npos || dot == 0)
        return std::nullopt;
    return from(trimmed, dot + 1);
}

} // namespace MWCore
