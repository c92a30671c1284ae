// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/foundation/mwcore_export.h"

#include <QByteArrayView>

/// Properties of a file system that follow from its type in the mount table. Any thread.
namespace MWCore {

/// Whether the kernel alone serves file systems of this type. Any other type may depend on a server
/// or a program, so a call may block for ever. False for an unknown type.
[[nodiscard]] MWCORE_EXPORT bool isLocalFileSystem(QByteArrayView type);

/// Whether a user-space program serves file systems of this type. The program chooses the subtype.
[[nodiscard]] bool isFuse(QByteArrayView type);

} // namespace MWCore
