// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/posix/Descriptor.h"
#include "core/posix/FinalLink.h"
#include "platform/files/MountSnapshot.h"
#include "platform/references/SearchBudget.h"

#include <optional>

namespace MWCore {

/// Opens items without touching file systems that might block. Where a server or program does not
/// answer, even looking up a name blocks. Local file systems may always be touched, others only if
/// they are allowed. Where a file system is mounted is read from the mount table, not from the
/// item. Belongs to one thread.
class MountGuard {
public:
    /// @p snapshot and @p budget must outlive this object.
    MountGuard(MountSnapshot &snapshot, SearchBudget &budget)
        : snapshot_(snapshot), budget_(budget) {}

    /// Allow the mount of that id, or every mount.
    void allow(int32_t mountId) { allowed_.push_back(mountId); }
    void allowAll() { allowsAll_ = true; }

    [[nodiscard]] bool mayTouch(const Mount &mount) const;

    /// Whether @p mount is visible at its mount point and every mount on the path to it may be
    /// touched.
    [[nodiscard]] bool isReachable(const Mount &mount) const;

    /// Whether something is mounted at @p path, which must have no links.
    [[nodiscard]] bool isMountPoint(const QByteArray &path) const;

    /// Opens the item at @p path, which is absolute, with O_PATH. Links on the path are followed.
    /// Returns an empty descriptor on failure, with the cause in @p status: fileBoundsErr
    /// if the path leads to a mount that may not be touched or the budget has stopped. Sets
    /// @p realPath, which may be null, to the path without links, or to the mount point that may
    /// not be touched.
    [[nodiscard]] Descriptor open(const QByteArray &path, FinalLink link, OSStatus *status,
                                  QByteArray *realPath = nullptr);

    [[nodiscard]] const std::vector<Mount> &mounts() const { return snapshot_.mounts(); }

private:
    class Walk;

    [[nodiscard]] Descriptor openWithin(const QByteArray &path, FinalLink link, OSStatus *status);
    [[nodiscard]] bool isWayOpen(const std::vector<const Mount *> &way) const;

    MountSnapshot &snapshot_;
    SearchBudget &budget_;
    std::vector<int32_t> allowed_;
    bool allowsAll_ = false;
};

} // namespace MWCore
