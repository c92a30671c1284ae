// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>
#include <optional>

#include <QByteArrayView>

/// Finding one resource of a fork without reading the others. Source of the layout: as ResourceMap.
namespace MWCore {

/// Where the two areas of a fork are, in bytes from its start.
struct ForkAreas {
    static constexpr qsizetype kHeadLength = 16; ///< of what tells it

    uint64_t data = 0;
    uint64_t dataLength = 0;
    uint64_t map = 0;
    uint64_t mapLength = 0;
};

/// The areas of a fork of @p length bytes that begins with @p head. Nothing when one lies outside.
[[nodiscard]] std::optional<ForkAreas> forkAreasOf(QByteArrayView head, uint64_t length);

/// Where the first resource of @p type is in the data area: four bytes that hold its length, then
/// the content. Nothing when there is none in @p map, the beginning of the map or all of it.
[[nodiscard]] std::optional<uint32_t> firstResourceOffset(QByteArrayView map, uint32_t type);

} // namespace MWCore
