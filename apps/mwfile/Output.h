// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <optional>
#include <string_view>

/// Standard output and standard error of the command.
namespace MWCore::mwfile {

/// Writes to standard output through a buffer. Throws Failure if the data cannot be written.
void print(std::string_view text);

/// Whether standard output is a terminal.
[[nodiscard]] bool printsToTerminal();

/// The width of the terminal behind a descriptor, in columns; nullopt if it is not a terminal or
/// the width is not known.
[[nodiscard]] std::optional<int> terminalColumns(int descriptor);

/// Flushes the buffer. Throws Failure if the data cannot be written.
void finishOutput();

/// Prints one line to standard error: the program's name and @p message, escaped for a terminal.
void printError(std::string_view message);

} // namespace MWCore::mwfile
