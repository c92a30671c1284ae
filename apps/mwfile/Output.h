// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <optional>
#include <string_view>

/// Standard output and standard error of the command.
namespace MWCore::mwfile {

/// Prints to standard output, through a buffer that empties whenever it is full.
/// Throws Failure when the data cannot be written.
void print(std::string_view text);

/// Whether a person reads what is printed.
[[nodiscard]] bool printsToTerminal();

/// The columns of the terminal that a descriptor leads to; nothing where there is none, or none
/// that tells.
[[nodiscard]] std::optional<int> terminalColumns(int descriptor);

/// Empties the buffer. Throws Failure when the data cannot be written.
void finishOutput();

/// Prints one line to standard error: the program's name and @p message made fit for a terminal.
void complain(std::string_view message);

} // namespace MWCore::mwfile
