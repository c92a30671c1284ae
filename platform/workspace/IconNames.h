// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/workspace/IconServices.h"

/// Icons by name. Names of themes are those of the XDG Icon Naming Specification, 0.8.
namespace MWCore {

constexpr const char *kFileDrawing = "generic-file";
constexpr const char *kFolderDrawing = "generic-folder";

/// The icon of the theme that is the first of @p names, which are separated by blanks, or else the
/// drawing.
[[nodiscard]] inline IconRef themeIcon(const char *names, const char *drawing) {
    return {{}, {}, QString::fromLatin1(names).split(u' '), QString::fromLatin1(drawing)};
}

} // namespace MWCore
