// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cerrno>

namespace MWCore {

/// Whether an `errno` value says that memory or descriptors have run out, which tells nothing about
/// the item that was asked for.
[[nodiscard]] constexpr bool isExhaustion(int error) {
    return error == ENOMEM || error == EMFILE || error == ENFILE;
}

} // namespace MWCore
