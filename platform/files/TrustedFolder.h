// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/posix/Descriptor.h"
#include "platform/foundation/OSStatus.h"

#include <QByteArray>

namespace MWCore {

/// Opens the folder at @p path as an O_PATH descriptor, for a caller that will change items in it.
/// A link on the path is followed only if nobody but the superuser and this process's user could
/// have put it there: the link and every folder before it belong to one of the two, and nobody else
/// may change names in those folders. Otherwise the owner of a folder could replace a folder in it
/// with a link and so redirect the change. For the same reason ".." returns to the folder that the
/// path came from, even if the folder that it leaves was moved. Returns an empty descriptor on
/// failure, with the cause in @p status: foreignLinkErr for a link that others could have made. Any
/// thread.
[[nodiscard]] Descriptor openTrustedFolder(const QByteArray &path, OSStatus *status);

/// Whether nobody but the superuser and this process's user can replace the item at @p path, which
/// is absolute, or a folder or link on the path. Items that do not exist yet count as ours. Any
/// thread.
[[nodiscard]] bool isSafeFromOthers(const QByteArray &path);

} // namespace MWCore
