// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "LabelledLines.h"
#include "TerminalPictures.h"

#include <string>

namespace MWCore::mwfile {

/// @p drawing, which takes @p room, with @p lines on its right, or below it if the terminal is too
/// narrow for both. @p columns is the width of the terminal.
[[nodiscard]] std::string withPicture(const std::string &drawing, const PictureRoom &room,
                                      const LabelledLines &lines, int columns);

} // namespace MWCore::mwfile
