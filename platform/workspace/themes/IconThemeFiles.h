// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/workspace/themes/IconFileList.h"
#include "platform/workspace/themes/IconThemeIndex.h"
#include "platform/workspace/themes/ItemStamps.h"

#include <atomic>
#include <cstdint>
#include <mutex>
#include <optional>
#include <vector>

#include <QByteArray>

namespace MWCore {

/// The files of one theme, without those that it inherits. Its folders are listed by the first
/// search. Any thread.
class IconThemeFiles {
public:
    /// The theme's folders are @p folders in each of @p themeFolders.
    IconThemeFiles(std::vector<QByteArray> themeFolders, std::vector<IconFolder> folders);

    /// The files in @p baseFolders themselves, for any size.
    [[nodiscard]] static IconThemeFiles unthemed(std::vector<QByteArray> baseFolders);

    /// The path of the icon's file in the first folder that matches the size, else of one that is
    /// nearest to it.
    [[nodiscard]] std::optional<QByteArray> find(QByteArrayView icon, int size, int scale);

    /// The folders of the theme, of which some may not exist.
    [[nodiscard]] const std::vector<QByteArray> &themeFolders() const { return themeFolders_; }

    /// Whether folders with its files have changed since they were listed.
    [[nodiscard]] bool haveChanged() const;

private:
    /// A folder of files: one of the theme's folders in one of the base folders.
    struct Place {
        QByteArray path;
        uint32_t folder; ///< the index in folders_
    };

    void list();
    void listFolder(uint32_t index, const QByteArray &path, ResponsiveFiles &files);
    void addStamps(const QByteArray &themeFolder, ResponsiveFiles &files);
    [[nodiscard]] const IconFolder &folderOf(const IconFileList::File &file) const;
    [[nodiscard]] std::optional<QByteArray> pathIfThere(QByteArrayView icon,
                                                        IconFileList::File &file) const;

    std::vector<QByteArray> themeFolders_;
    std::vector<IconFolder> folders_;
    std::once_flag listed_;
    std::vector<Place> places_;
    IconFileList files_; ///< by index in places_
    ItemStamps stamps_;
    std::atomic<bool> isListed_ = false; ///< set after everything above
};

} // namespace MWCore
