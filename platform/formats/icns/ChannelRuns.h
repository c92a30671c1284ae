// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>
#include <optional>
#include <span>

#include <QByteArray>
#include <QByteArrayView>

/// The compression of the icns format's RGB and ARGB elements, one channel after another: a lead
/// byte of 0 to 127 is followed by lead + 1 literal bytes, one of 128 to 255 by a byte that is
/// repeated lead - 125 times.
namespace MWCore {

/// Appends the shortest encoding of @p channel to @p bytes. Linear time.
void appendChannelRuns(QByteArray &bytes, std::span<const uint8_t> channel);

/// Decodes the next channel from @p bytes on, and removes it from them. False if they end before
/// the channel is full, or a run goes beyond its end; @p channel is then filled in part.
[[nodiscard]] bool takeChannelRuns(QByteArrayView &bytes, std::span<uint8_t> channel);

} // namespace MWCore
