// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/files/MountSnapshot.h"
#include "platform/references/MountGuard.h"
#include "platform/references/SearchBudget.h"

#include <cstdint>
#include <optional>

#include <QByteArray>

namespace MWCore {

/// The id of a mount whose file system depends on a server or a program and may never answer.
using RemoteMount = int32_t;

/// Finds out where items are without touching a file system that may not answer. The mount table is
/// as it was at the first call. Belongs to one thread.
class ItemPlaces {
public:
    /// The mount of the item at @p path, 0 if that is not known; nullopt if the kernel alone serves
    /// it.
    [[nodiscard]] std::optional<RemoteMount> remoteMountOf(const QByteArray &path);

private:
    void enter(const QByteArray &folder);

    MountSnapshot mounts_;
    SearchBudget budget_{SearchLimits()};
    MountGuard guard_{mounts_, budget_};
    QByteArray folder_;         ///< the last one
    QByteArray realFolder_;     ///< without links, or the mount point that is out of reach
    bool isOutOfReach_ = false; ///< a file system that may not answer is on the way
};

} // namespace MWCore
