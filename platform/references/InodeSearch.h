// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/files/FileIdentity.h"
#include "platform/files/FolderBlock.h"
#include "platform/files/MountTable.h"
#include "platform/references/SearchBudget.h"

#include <cstdint>
#include <optional>

#include <QByteArray>
#include <QList>

namespace MWCore {

/// Searches for an item by its inode number, which a folder lists with each name, so that only
/// items with that number are examined. Links are not followed. Other mounts are not touched: their
/// mount points are known from the mount table. Folders more than 200 levels deep are left out. Any
/// thread, one search per object.
class InodeSearch {
public:
    /// @p wanted, @p mounts and @p budget must outlive this object.
    InodeSearch(const FileIdentity &wanted, const std::vector<Mount> &mounts, SearchBudget &budget);

    /// The item's name in the open folder @p folder, whose path without links is @p path. nullopt
    /// if the item is not directly in that folder.
    [[nodiscard]] std::optional<QByteArray> inFolder(int folder, const QByteArray &path);

    /// The same for a folder of which only the inode number is known.
    [[nodiscard]] std::optional<QByteArray> subfolderOf(int folder, const QByteArray &path);

    /// The path of the item at any depth below @p folder; nullopt if it is not found.
    [[nodiscard]] std::optional<QByteArray> below(int folder, const QByteArray &path);

private:
    struct Names;
    enum class Match { WholeIdentity, FolderByNumber };

    [[nodiscard]] bool scan(int folder, const QByteArray &path, Names *subfolders);
    [[nodiscard]] bool descend(int folder, const QByteArray &path, int depth);
    [[nodiscard]] bool isWanted(int folder, const dirent64 &entry) const;
    void stayOnMountOf(int folder, const QByteArray &path);
    [[nodiscard]] QList<QByteArray> mountPointsIn(const QByteArray &path) const;

    const FileIdentity &wanted_;
    const std::vector<Mount> &mounts_;
    SearchBudget &budget_;
    FolderBlock block_; ///< reused for every folder
    Match match_ = Match::WholeIdentity;
    uint64_t mount_ = 0;            ///< id of the mount that is searched
    QList<QByteArray> mountPoints_; ///< of other mounts below the searched folder
    QByteArray found_;              ///< the item's name
    QByteArray foundIn_;            ///< the path of its folder
};

} // namespace MWCore
