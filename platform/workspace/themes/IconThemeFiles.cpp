// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/themes/IconThemeFiles.h"

#include "platform/files/PathParts.h"
#include "platform/files/RegularFile.h"
#include "platform/workspace/ResponsiveFiles.h"

#include <limits>
#include <utility>

namespace MWCore {

IconThemeFiles::IconThemeFiles(std::vector<QByteArray> themeFolders,
                               std::vector<IconFolder> folders)
    : themeFolders_(std::move(themeFolders)), folders_(std::move(folders)) {}

IconThemeFiles IconThemeFiles::unthemed(std::vector<QByteArray> baseFolders) {
    constexpr int kAny = std::numeric_limits<int>::max();
    return {std::move(baseFolders),
            {{.name = "", .type = IconFolder::Type::Scalable, .minSize = 0, .maxSize = kAny}}};
}

void IconThemeFiles::list() {
    ResponsiveFiles files;
    for (uint32_t index = 0; index < folders_.size(); ++index) {
        for (const QByteArray &themeFolder : themeFolders_) {
            const QByteArray path = pathIn(themeFolder, folders_[index].name);
            const Descriptor found = files.open(path);
            const Descriptor folder =
                found ? openFolderAt(found.number(), ".", FinalLink::Keep) : Descriptor();
            if (!folder)
                continue;
            files_.addFolder(folder.number(), static_cast<uint32_t>(places_.size()));
            places_.push_back({path, index});
        }
    }
    files_.sort();
}

const IconFolder &IconThemeFiles::folderOf(const IconFileList::File &file) const {
    return folders_[places_[file.folder].folder];
}

std::optional<QByteArray> IconThemeFiles::pathIfThere(QByteArrayView icon,
                                                      const IconFileList::File &file) const {
    QByteArray path = pathIn(places_[file.folder].path, icon.toByteArray());
    path += IconFileList::kExtensions[file.extension];
    return file.isCertain || !ResponsiveFiles().regularFile(path).isEmpty() ? std::optional(path)
                                                                            : std::nullopt;
}

std::optional<QByteArray> IconThemeFiles::find(QByteArrayView icon, int size, int scale) {
    std::call_once(listed_, [this] { list(); });
    const auto files = files_.filesNamed(icon);
    for (const IconFileList::File &file : files)
        if (folderOf(file).matches(size, scale))
            if (auto path = pathIfThere(icon, file))
                return path;
    std::optional<QByteArray> nearest;
    int64_t smallest = std::numeric_limits<int64_t>::max();
    for (const IconFileList::File &file : files) {
        const int64_t distance = folderOf(file).distance(size, scale);
        auto path = distance < smallest ? pathIfThere(icon, file) : std::nullopt;
        if (!path)
            continue;
        nearest = std::move(path);
        smallest = distance;
    }
    return nearest;
}

} // namespace MWCore
