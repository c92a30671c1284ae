// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/files/ItemLocator.h"
#include "platform/foundation/OSStatus.h"
#include "platform/metadata/FinderInfo.h"

#include <QByteArray>

/// Replaces and removes items together with their metadata. Any thread.
namespace MWCore {

/// Puts a new empty file with this Finder information and resource fork in the place of whatever is
/// there, and of its sidecar; nothing of the old ones is kept. The fork is written to the sidecar.
/// At any moment, also after a crash, the old or the new fork is whole. A folder is not replaced:
/// permErr. On failure the new file may lack its Finder information.
[[nodiscard]] OSStatus replaceItem(const ItemLocator &place, const FinderInfo &info,
                                   const QByteArray &fork);

/// Removes a file and its sidecar. fnfErr if there is no file; a sidecar without one is removed all
/// the same. A folder and its sidecar are not removed: permErr.
[[nodiscard]] OSStatus removeItemAndSidecar(const ItemLocator &place);

} // namespace MWCore
