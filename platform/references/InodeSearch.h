// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/files/FileIdentity.h"
#include "platform/files/FileStatus.h"
#include "platform/files/FolderBlock.h"

#include <atomic>
#include <cstdint>
#include <optional>

#include <QByteArray>

namespace MWCore {

/// How far a search may go.
struct SearchLimits {
    int64_t entries = 4'000'000;                  ///< names looked at before it gives up
    const std::atomic<bool> *cancelled = nullptr; ///< read after every block of names; may be null
};

/// Looks for an item by its inode number, which a folder tells with each name: only names that
/// carry the number are examined. Links are not followed, other mounts not touched; folders of more
/// than 200 levels are left out. Any thread, one search an object.
class InodeSearch {
public:
    /// @p wanted must outlive this object.
    InodeSearch(const FileIdentity &wanted, SearchLimits limits);

    /// The path of the item directly in @p folder.
    [[nodiscard]] std::optional<QByteArray> inFolder(const QByteArray &folder);

    /// The path of the item anywhere below @p folder.
    [[nodiscard]] std::optional<QByteArray> below(const QByteArray &folder);

    /// noErr; userCanceledErr when it was cancelled, fileBoundsErr when it gave up or left folders
    /// out.
    [[nodiscard]] OSStatus status() const {
        return status_ == noErr && leftOut_ ? fileBoundsErr : status_;
    }

    /// noErr, or why names of a folder could not be read: the item may be among them.
    [[nodiscard]] OSStatus readFailure() const { return readFailure_; }

private:
    struct Names;

    [[nodiscard]] bool scan(int folder, const QByteArray &path, Names *subfolders);
    [[nodiscard]] bool descend(int folder, const QByteArray &path, int depth);
    [[nodiscard]] bool mayGoOn();
    [[nodiscard]] bool isIt(int folder, const char *name) const;

    const FileIdentity &wanted_;
    SearchLimits limits_;
    FolderBlock block_; ///< of one folder at a time
    OSStatus status_ = noErr;
    OSStatus readFailure_ = noErr;
    bool leftOut_ = false; ///< a folder was too deep
    uint64_t mount_ = 0;   ///< that is searched: its mount id
    QByteArray found_;
};

} // namespace MWCore
