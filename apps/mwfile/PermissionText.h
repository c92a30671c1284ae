// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/MXFileSystemObject.h>

#include <cstdint>
#include <initializer_list>
#include <string>

namespace MWCore::mwfile {

/// The permission number of an item; of a link, whose own mean nothing, that of what it leads to,
/// and 0 when it leads nowhere.
[[nodiscard]] int32_t permissionNumber(const MXFileSystemObject &item);

/// The nine permission bits behind the permission number of an item. The codec would read the
/// number 7 as the owner's digit, since it cannot know of the zeros before it; an item's number
/// always has three digits.
[[nodiscard]] uint32_t modeOfNumber(int32_t permissions);

/// The nine characters of an item's permission number: "rwxr-xr-x", "------rwx" for 7.
[[nodiscard]] std::string permissionsText(int32_t permissions);

/// The special bits of a mode word: "set user id, sticky", or "none".
[[nodiscard]] std::string specialText(uint32_t mode);

/// Words with commas between them, or "none". Each is there when its bit is in @p bits.
struct BitWord {
    uint32_t bit;
    const char *word;
};
[[nodiscard]] std::string wordsFor(uint32_t bits, std::initializer_list<BitWord> words);

} // namespace MWCore::mwfile
