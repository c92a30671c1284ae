// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/posix/Descriptor.h"
#include "platform/files/MountSnapshot.h"
#include "platform/references/SearchBudget.h"

#include <optional>

namespace MWCore {

/// What a link at the end of a path means to Reach::open().
enum class LastLink { Keep, Follow };

/// Opens items without ever waiting for a file system that was not asked for: a server or program
/// that keeps silent would stop whoever so much as looks up a name there. Local file systems may be
/// touched, others only when they are allowed. What lies where is read in the table of mounts, not
/// asked of the item. Belongs to one thread.
class Reach {
public:
    /// @p snapshot and @p budget must outlive it.
    Reach(MountSnapshot &snapshot, SearchBudget &budget) : snapshot_(snapshot), budget_(budget) {}

    /// The mounts of that id, and every mount when none is a limit any more.
    void allow(int32_t mountId) { allowed_.push_back(mountId); }
    void allowAll() { allowsAll_ = true; }

    [[nodiscard]] bool mayTouch(const Mount &mount) const;

    /// Whether @p mount can be seen at its mount point and nothing on the way to it is out of
    /// reach.
    [[nodiscard]] bool reaches(const Mount &mount) const;

    /// Whether something is mounted at @p path, which has no links.
    [[nodiscard]] bool isMountPoint(const QByteArray &path) const;

    /// The item at @p path, an absolute path, opened with O_PATH. An empty descriptor on failure,
    /// with the cause in @p error: an `errno` value, EXDEV for what is out of reach. Links on the
    /// way are followed. @p realPath, which may be null, becomes the path without any.
    [[nodiscard]] Descriptor open(const QByteArray &path, LastLink link, int *error,
                                  QByteArray *realPath = nullptr);

    [[nodiscard]] const std::vector<Mount> &mounts() const { return snapshot_.mounts(); }

private:
    class Walk;

    [[nodiscard]] Descriptor openWithin(const QByteArray &path, LastLink link, int *error);
    [[nodiscard]] bool isWayOpen(const std::vector<const Mount *> &way) const;

    MountSnapshot &snapshot_;
    SearchBudget &budget_;
    std::vector<int32_t> allowed_;
    bool allowsAll_ = false;
};

} // namespace MWCore
