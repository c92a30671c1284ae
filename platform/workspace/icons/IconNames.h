// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/workspace/icons/IconServices.h"

#include <utility>

#include <QStringList>

/// Icons by name. Names of themes are those of the XDG Icon Naming Specification, 0.8.
namespace MWCore {

constexpr const char *kFileDrawing = "generic-file";
constexpr const char *kFolderDrawing = "generic-folder";

/// The icon of the theme that is the first of @p names, or else the drawing.
[[nodiscard]] inline IconRef themeIcon(QStringList names, const char *drawing) {
    IconRef icon;
    icon.themeNames = std::move(names);
    icon.drawing = QString::fromLatin1(drawing);
    return icon;
}

/// The same for names that are separated by blanks.
[[nodiscard]] inline IconRef themeIcon(const char *names, const char *drawing) {
    return themeIcon(QString::fromLatin1(names).split(u' '), drawing);
}

} // namespace MWCore
