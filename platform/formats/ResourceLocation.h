// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>
#include <optional>

#include <QByteArrayView>

/// Finds one resource of a fork without reading the others. Source of the layout: see ResourceMap.
namespace MWCore {

constexpr uint64_t kMapTypeList = 24;         ///< where the map has the offset of its type list
constexpr uint64_t kTypeLength = 8;           ///< of an entry of the type list
constexpr uint32_t kLargestOffset = 0xFFFFFF; ///< in the data area: three bytes

/// The two areas of a fork: bytes from its start, and lengths in bytes.
struct ForkAreas {
    static constexpr qsizetype kHeadLength = 16; ///< bytes that describe the areas

    uint64_t data = 0;
    uint64_t dataLength = 0;
    uint64_t map = 0;
    uint64_t mapLength = 0;
};

/// The areas of a fork of @p length bytes that starts with @p head. nullopt if the head is too
/// short or an area lies outside the fork.
[[nodiscard]] std::optional<ForkAreas> forkAreasOf(QByteArrayView head, uint64_t length);

/// The offset in the data area of the first resource of @p type: four bytes with its length, then
/// the content. nullopt if @p map, all or the beginning of a map, lists none.
[[nodiscard]] std::optional<uint32_t> firstResourceOffset(QByteArrayView map, uint32_t type);

} // namespace MWCore
