// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>

#include <QByteArray>

namespace MWCore {

/// The time now, in nanoseconds since 1970, by the clock from which items of the folder @p path
/// get their change times: an item whose change time is earlier is as it was. 0 if the folder is
/// not on a disk of this computer, whose clock another one's could differ from. Any thread.
[[nodiscard]] int64_t listingTime(const QByteArray &path);

} // namespace MWCore
