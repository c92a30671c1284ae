// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/mfs_string.h"

#include "core/posix/allocation.h"
#include "core/text_views.h"

using MWCore::withoutBackSpaces;

int32_t mfs_string_back_spaces(const char *text) {
    if (!text)
        return 0;
    const std::string_view view = text;
    return static_cast<int32_t>(view.size() - withoutBackSpaces(view).size());
}

char *mfs_string_get_extension(const char *name) {
    const auto extension = name ? MWCore::extensionOf(name) : std::nullopt;
    return extension ? MWCore::copied(*extension, "mfs_string_get_extension").release() : nullptr;
}

int mfs_string_get_extension_with_known_length(const char *name, char **out, int32_t length) {
    if (!name || !out || !*out || length < 1)
        return 0;
    const std::string_view trimmed = withoutBackSpaces(name);
    const auto tail = static_cast<std::size_t>(length);
    if (tail > trimmed.size() || trimmed[trimmed.size() - tail] != '.')
        return 0;
    std::memcpy(*out, trimmed.data() + trimmed.size() - tail + 1, tail - 1);
    (*out)[tail - 1] = '\0';
    return 1;
}
