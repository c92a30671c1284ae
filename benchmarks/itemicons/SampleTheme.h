// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <filesystem>

/// Makes an icon theme of @p files PNG files in @p folder, whose name is that of the theme. Among
/// them are icons of the usual kinds of items; it has no icon-theme.cache, or one that is older
/// than its files and therefore not to be used.
enum class ThemeCache { None, Outdated };
void makeSampleTheme(const std::filesystem::path &folder, long files, ThemeCache cache);
