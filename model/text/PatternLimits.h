// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <QByteArray>

namespace MWCore {

/// Whether the C library can safely compile and match an extended regular expression (POSIX). It
/// compiles groups by recursion and expands repetitions, so 28 characters can take minutes and
/// gigabytes; back-references, which extended expressions do not have, can crash it. False if
/// @p pattern has a back-reference, more than 4,096 bytes, 250 groups or three nested repetitions,
/// or more than 10,000 parts when expanded.
[[nodiscard]] bool isWithinLimits(const QByteArray &pattern);

} // namespace MWCore
