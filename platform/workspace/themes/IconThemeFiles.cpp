// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/themes/IconThemeFiles.h"

#include "platform/files/PathParts.h"
#include "platform/files/RegularFile.h"
#include "platform/workspace/ResponsiveFiles.h"

#include <limits>
#include <utility>

#include <QSet>

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
    std::vector<QByteArray> themeFolders;
    for (const QByteArray &folder : themeFolders_)
        if (files.open(folder))
            themeFolders.push_back(folder);
    for (const QByteArray &folder : themeFolders)
        addStamps(folder, files);
    for (uint32_t index = 0; index < folders_.size(); ++index)
        for (const QByteArray &folder : themeFolders)
            listFolder(index, pathIn(folder, folders_[index].name), files);
    files_.finish();
    isListed_.store(true, std::memory_order_release);
}

/// Stamps the folders in which new folders of icons may appear: "48x48" of "48x48/apps".
void IconThemeFiles::addStamps(const QByteArray &themeFolder, ResponsiveFiles &files) {
    QSet<QByteArray> names;
    for (const IconFolder &folder : folders_)
        if (const qsizetype slash = folder.name.indexOf('/'); slash > 0)
            names.insert(folder.name.first(slash));
    stamps_.add(themeFolder, files);
    for (const QByteArray &name : std::as_const(names))
        stamps_.add(pathIn(themeFolder, name), files);
}

void IconThemeFiles::listFolder(uint32_t index, const QByteArray &path, ResponsiveFiles &files) {
    const Descriptor found = files.open(path);
    const Descriptor folder =
        found ? openFolderAt(found.number(), ".", FinalLink::Keep) : Descriptor();
    if (!folder || places_.size() >= IconFileList::kMostFolders)
        return;
    stamps_.add(path, files);
    files_.addFolder(folder.number(), static_cast<uint16_t>(places_.size()));
    places_.push_back({path, index});
}

bool IconThemeFiles::haveChanged() const {
    return isListed_.load(std::memory_order_acquire) && stamps_.haveChanged();
}

const IconFolder &IconThemeFiles::folderOf(const IconFileList::File &file) const {
    return folders_[places_[file.folder].folder];
}

std::optional<QByteArray> IconThemeFiles::pathIfThere(QByteArrayView icon,
                                                      IconFileList::File &file) const {
    using Kind = IconFileList::Kind;
    QByteArray path = pathIn(places_[file.folder].path, icon.toByteArray());
    path += IconFileList::kExtensions[file.extension];
    Kind kind = IconFileList::kindOf(file);
    if (kind == Kind::Link) {
        kind = ResponsiveFiles().regularFile(path).isEmpty() ? Kind::Useless : Kind::File;
        IconFileList::setKind(file, kind);
    }
    return kind == Kind::File ? std::optional(path) : std::nullopt;
}

std::optional<QByteArray> IconThemeFiles::find(QByteArrayView icon, int size, int scale) {
    std::call_once(listed_, [this] { list(); });
    const auto files = files_.filesNamed(icon);
    for (IconFileList::File &file : files)
        if (folderOf(file).matches(size, scale))
            if (auto path = pathIfThere(icon, file))
                return path;
    std::optional<QByteArray> nearest;
    auto best = std::pair(std::numeric_limits<int64_t>::max(), false);
    for (IconFileList::File &file : files) {
        const IconFolder &folder = folderOf(file);
        // Of two that are as near, the larger one: reducing looks better than enlarging.
        const auto rank = std::pair(folder.distance(size, scale), !folder.isLarger(size, scale));
        auto path = rank < best ? pathIfThere(icon, file) : std::nullopt;
        if (!path)
            continue;
        nearest = std::move(path);
        best = rank;
    }
    return nearest;
}

} // namespace MWCore
