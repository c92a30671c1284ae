// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/MXFileSystemObject.h>

#include <cstdint>
#include <initializer_list>
#include <string>

namespace MWCore::mwfile {

/// The permission number of an item. A link, whose own permissions mean nothing, has that of its
/// target, or 0 if it is broken.
[[nodiscard]] int32_t permissionNumber(const MXFileSystemObject &item);

/// The nine permission bits of an item's permission number, read as three digits. The core's codec
/// would read 7 as the owner's digit, because a number has no leading zeros.
[[nodiscard]] uint32_t modeOfNumber(int32_t permissions);

/// The nine characters of an item's permission number: "rwxr-xr-x", "------rwx" for 7.
[[nodiscard]] std::string permissionsText(int32_t permissions);

/// The special bits of a mode word: "set user id, sticky", or "none".
[[nodiscard]] std::string specialText(uint32_t mode);

/// The words whose bits are set in @p bits, separated by commas, or "none".
struct BitWord {
    uint32_t bit;
    const char *word;
};
[[nodiscard]] std::string wordsFor(uint32_t bits, std::initializer_list<BitWord> words);

} // namespace MWCore::mwfile
