// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>
#include <vector>

#include <QByteArray>
#include <QByteArrayView>

/// The file index.theme of an icon theme (XDG Icon Theme Specification, 0.13).
namespace MWCore {

/// A folder of icons and the sizes for which it is meant, in points.
struct IconFolder {
    enum class Type : uint8_t { Fixed, Scalable, Threshold };

    QByteArray name; ///< its path in the theme's folder: "16x16/apps"
    Type type = Type::Threshold;
    int size = 0;
    int scale = 1;    ///< pixels per point
    int minSize = -1; ///< -1 means the same as `size`
    int maxSize = -1;
    int threshold = 2;

    [[nodiscard]] bool matches(int iconSize, int iconScale) const;

    /// How many pixels too small or too large its icons are.
    [[nodiscard]] int64_t distance(int iconSize, int iconScale) const;

    [[nodiscard]] bool isLarger(int iconSize, int iconScale) const {
        return int64_t(size) * scale > int64_t(iconSize) * iconScale;
    }
};

struct IconThemeIndex {
    static constexpr int64_t kLongest = 1'048'576; ///< bytes that are read; large ones have 60,000
    static constexpr std::size_t kMostFolders = 4096;

    std::vector<QByteArray> parents; ///< the names of the themes that it inherits
    std::vector<IconFolder> folders; ///< in the order in which they are searched

    /// Folders without a size, and names that lead out of the theme's folder, are left out. Time is
    /// linear in the number of bytes.
    [[nodiscard]] static IconThemeIndex parse(QByteArrayView bytes);
};

/// Whether @p name can be the name of a theme or of an icon: that of an item in a folder.
[[nodiscard]] bool isPlainName(QByteArrayView name);

} // namespace MWCore
