// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <QByteArrayView>

/// What the type of a file system, as the table of mounts names it, says about it. Any thread.
namespace MWCore {

/// Whether the kernel alone answers for a file system of this type. Any other may ask a server or a
/// program, which can keep it waiting for ever. False for a type that is not known.
[[nodiscard]] bool isLocalFileSystem(QByteArrayView type);

/// Whether a program of a user's answers for it, under a name that it chose itself.
[[nodiscard]] bool isFuse(QByteArrayView type);

} // namespace MWCore
