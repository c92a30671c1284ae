// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/posix/Descriptor.h"
#include "platform/foundation/OSStatus.h"

#include <QByteArray>

namespace MWCore {

/// Opens the folder at @p path, an O_PATH descriptor, for somebody about to change what is in it.
/// A link on the way is followed only if nobody but the superuser and this process's user could
/// have put it there: it belongs to one of them, and so does each folder passed before it, without
/// others having the right to change its names. Whoever owns a folder could otherwise exchange an
/// inner one for a link and have the change made elsewhere. For the same reason ".." leads back to
/// the folder that the path came from, even if the one that it leaves is elsewhere by now. An empty
/// descriptor on failure, with the cause in @p status: foreignLinkErr for a link that others could
/// have made. Any thread.
[[nodiscard]] Descriptor openTrustedFolder(const QByteArray &path, OSStatus *status);

/// Whether nobody but the superuser and this process's user can exchange @p path, an absolute one,
/// or a folder or link on the way. What is not there yet counts as if it were ours. Any thread.
[[nodiscard]] bool isOnlyOurs(const QByteArray &path);

} // namespace MWCore
