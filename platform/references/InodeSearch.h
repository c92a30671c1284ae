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

/// Looks for an item by its inode number, which a folder tells with each name: only names that
/// carry the number are examined. Links are not followed and other mounts not touched: the names of
/// their mount points are known from the table. Folders of more than 200 levels are left out. Any
/// thread, one search an object.
class InodeSearch {
public:
    /// @p wanted, @p mounts and @p budget must outlive this object.
    InodeSearch(const FileIdentity &wanted, const std::vector<Mount> &mounts, SearchBudget &budget);

    /// The item's name directly in the open folder @p folder, which is the one at @p path (without
    /// links).
    [[nodiscard]] std::optional<QByteArray> inFolder(int folder, const QByteArray &path);

    /// The same of a folder, of which nothing but the inode number is known.
    [[nodiscard]] std::optional<QByteArray> subfolderOf(int folder, const QByteArray &path);

    /// The path of the item anywhere below it.
    [[nodiscard]] std::optional<QByteArray> below(int folder, const QByteArray &path);

private:
    struct Names;
    enum class Match { WholeIdentity, FolderByNumber };

    [[nodiscard]] bool scan(int folder, const QByteArray &path, Names *subfolders);
    [[nodiscard]] bool descend(int folder, const QByteArray &path, int depth);
    [[nodiscard]] bool isIt(int folder, const dirent64 &entry) const;
    void stayOnMountOf(int folder, const QByteArray &path);
    [[nodiscard]] QList<QByteArray> mountPointsIn(const QByteArray &path) const;

    const FileIdentity &wanted_;
    const std::vector<Mount> &mounts_;
    SearchBudget &budget_;
    FolderBlock block_; ///< of one folder at a time
    Match match_ = Match::WholeIdentity;
    uint64_t mount_ = 0;            ///< that is searched: its mount id
    QList<QByteArray> mountPoints_; ///< paths below the folder that is searched
    QByteArray found_;              ///< name
    QByteArray foundIn_;            ///< path of the folder
};

} // namespace MWCore
