// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <optional>
#include <string_view>

namespace MWCore {

/// String view operations for paths and names. They avoid functions that can throw (`substr`,
/// `starts_with` with a text), which would tie the core to the C++ runtime.

[[nodiscard]] constexpr std::string_view prefixOf(std::string_view text, std::size_t count) {
    return {text.data(), count};
}

[[nodiscard]] constexpr std::string_view suffixFrom(std::string_view text, std::size_t start) {
    return {text.data() + start, text.size() - start};
}

// Paths.

[[nodiscard]] constexpr bool isAbsolute(std::string_view path) {
    return path.starts_with('/');
}

/// The part after the last "/"; the whole path if it has none.
[[nodiscard]] constexpr std::string_view lastComponent(std::string_view path) {
    return suffixFrom(path, path.rfind('/') + 1);
}

/// The part before the last "/"; empty if the path has none.
[[nodiscard]] constexpr std::string_view beforeLastSlash(std::string_view path) {
    const auto slash = path.rfind('/');
    return prefixOf(path, slash == std::string_view::npos ? 0 : slash);
}

/// As beforeLastSlash(), but "/" for an item in the root folder.
[[nodiscard]] constexpr std::string_view containingFolder(std::string_view path) {
    return path.rfind('/') == 0 ? prefixOf(path, 1) : beforeLastSlash(path);
}

// Names.

[[nodiscard]] constexpr std::string_view withoutFrontSpaces(std::string_view text) {
    const auto start = text.find_first_not_of(' ');
    return suffixFrom(text, start == std::string_view::npos ? text.size() : start);
}

[[nodiscard]] constexpr std::string_view withoutBackSpaces(std::string_view text) {
    return prefixOf(text, text.find_last_not_of(" \r\n") + 1);
}

/// The part after the last dot, without trailing spaces; nullopt if there is no dot or only a
/// leading one.
[[nodiscard]] constexpr std::optional<std::string_view> extensionOf(std::string_view name) {
    const std::string_view trimmed = withoutBackSpaces(name);
    const auto dot = trimmed.rfind('.');
    if (dot == std::string_view::npos || dot == 0)
        return std::nullopt;
    return suffixFrom(trimmed, dot + 1);
}

} // namespace MWCore
