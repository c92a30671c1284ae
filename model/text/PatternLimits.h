// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <QByteArray>

namespace MWCore {

/// Whether the C library can compile and match an extended regular expression (POSIX) with the
/// stack, memory and time that a program has. It compiles groups by recursion and writes
/// repetitions out, so that 28 characters can take minutes and gigabytes; references to groups,
/// which are no part of extended expressions, can crash it. Too much is more than 4,096 bytes, 250
/// groups or three repetitions in one another, or 10,000 parts when written out.
[[nodiscard]] bool isWithinLimits(const QByteArray &pattern);

} // namespace MWCore
