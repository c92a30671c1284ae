// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cerrno>

namespace MWCore {

/// Whether an `errno` value means that memory or descriptors ran out, which says nothing about the
/// item that was examined.
[[nodiscard]] constexpr bool isExhaustion(int error) {
    return error == ENOMEM || error == EMFILE || error == ENFILE;
}

} // namespace MWCore
