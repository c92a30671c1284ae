// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/posix/Descriptor.h"
#include "platform/files/MountSnapshot.h"
#include "platform/references/MountGuard.h"
#include "platform/references/SearchBudget.h"

#include <cstdint>
#include <optional>
#include <utility>

#include <QByteArray>

namespace MWCore {

/// Reads files at paths that others have chosen, without waiting for a file system that does not
/// answer: only local ones are touched, that of the home folder, and that of one item. Links are
/// followed. Belongs to one thread.
class ResponsiveFiles {
public:
    /// @p item is on a file system that may be touched; an empty path means none.
    explicit ResponsiveFiles(QByteArray item = {}) : item_(std::move(item)) {}

    ResponsiveFiles(const ResponsiveFiles &) = delete;
    ResponsiveFiles &operator=(const ResponsiveFiles &) = delete;
    ~ResponsiveFiles() = default;

    /// An O_PATH descriptor of the item at @p path, which is absolute; empty on failure. Sets
    /// @p realPath, which may be null, to the path without links.
    [[nodiscard]] Descriptor open(const QByteArray &path, QByteArray *realPath = nullptr);

    /// The path without links of the regular file at @p path; empty if there is none.
    [[nodiscard]] QByteArray regularFile(const QByteArray &path);

    /// The content of the regular file at @p path; nullopt if it cannot be read or is longer than
    /// @p limit bytes.
    [[nodiscard]] std::optional<QByteArray> read(const QByteArray &path, int64_t limit);

private:
    [[nodiscard]] bool allowMore();

    QByteArray item_;
    bool isMoreAllowed_ = false;
    MountSnapshot mounts_;
    SearchBudget budget_{SearchLimits()};
    MountGuard guard_{mounts_, budget_};
};

} // namespace MWCore
