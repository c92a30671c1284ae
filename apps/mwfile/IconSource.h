// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/IconFamilyData.h>
#include <MWCore/MXFileSystemObject.h>

#include <optional>
#include <string>

#include <QImage>

/// The icon families that the paths on the command line mean. Links are followed.
namespace MWCore::mwfile {

struct IconSource {
    enum class Origin {
        File,       ///< an .icns file
        CustomIcon, ///< of a file or folder
        Desktop,    ///< what the desktop shows for an item without a custom icon
    };
    IconFamilyHandle family;
    Origin origin;
};

/// Whether @p path ends with @p extension, which is given in lower case.
[[nodiscard]] bool hasExtension(const std::string &path, const std::string &extension);

/// Whether @p path is that of an iconset, a folder of PNG files for all sizes; it may end with "/".
[[nodiscard]] bool isIconset(const std::string &path);

/// The family in the file at @p path; nullopt if it is not an icns file or cannot be read.
[[nodiscard]] std::optional<IconFamilyHandle> familyInFile(const std::string &path);

/// The family in the file at @p path, else the custom icon of the item there. Throws Failure if
/// there is neither.
[[nodiscard]] IconSource familyAt(const std::string &path);

/// The same, but an item without a custom icon has the icon that the desktop shows for it.
[[nodiscard]] IconSource shownFamilyAt(const std::string &path);

/// The icon that a file browser shows for @p item, in a square of @p pixels, with its badge. Throws
/// Failure, with @p path as given, if memory runs out.
[[nodiscard]] QImage shownIcon(const MXFileSystemObject &item, const std::string &path, int pixels);

/// The same for the item at @p path; a link is not followed. For an .icns file, its own image.
/// Throws Failure if nothing is there, or the file has no image.
[[nodiscard]] QImage shownIconAt(const std::string &path, int pixels);

} // namespace MWCore::mwfile
