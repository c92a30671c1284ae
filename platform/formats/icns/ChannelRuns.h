// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>
#include <span>

#include <QByteArray>
#include <QByteArrayView>

/// The compression of RGB and ARGB elements, one channel after another: a lead byte of 0 to 127 is
/// followed by lead + 1 literal bytes, one of 128 to 255 by a byte that is repeated lead - 125
/// times. Source: the published icns format.
namespace MWCore {

/// Appends the shortest encoding of @p channel to @p bytes. Linear time.
void appendChannelRuns(QByteArray &bytes, std::span<const uint8_t> channel);

/// Appends an encoding of @p channel without any run, which is longer than the shortest one if
/// there are more than 128 bytes.
void appendChannelLiterals(QByteArray &bytes, std::span<const uint8_t> channel);

/// How compressed bytes and the channels that they should fill went together.
enum class RunsFit : uint8_t {
    Exact,
    TooLong,  ///< bytes are left after the channels were full
    TooShort, ///< the bytes end before the channels are full
};

/// Decompresses @p bytes to @p channels, all of them one after another. A run may cross the border
/// of two channels, which some programs write.
[[nodiscard]] RunsFit decompressRuns(QByteArrayView bytes, std::span<uint8_t> channels);

} // namespace MWCore
