// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/formats/AliasRecord.h"
#include "platform/references/Reach.h"

#include <vector>

#include <QByteArray>
#include <QList>

namespace MWCore {

/// Lets @p reach touch the file system that the item of @p record was on, wherever it is mounted:
/// also a network file system or one of a program, which is recognised by the table of mounts
/// alone.
void allowRecorded(const AliasRecord &record, Reach &reach);

/// Where that file system can be seen now, its usual place first. None when it is not there: a
/// local file system is asked for its id, and where that is no more than a number which the next
/// one gets as well, for what only the same one has.
[[nodiscard]] std::vector<const Mount *> mountsOfRecorded(const AliasRecord &record,
                                                          const Reach &reach);

/// The names on the way from the recorded mount point to the item. Empty for the mount point
/// itself, and for a record whose path has no such way.
[[nodiscard]] QList<QByteArray> namesBelowMountPoint(const AliasRecord &record);

} // namespace MWCore
