// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/formats/ResourceLocation.h"

#include <cstdint>
#include <optional>
#include <vector>

#include <QByteArray>
#include <QByteArrayView>

namespace MWCore {

/// One resource of a fork.
struct Resource {
    uint32_t type; ///< a four-character code
    int16_t id;
    std::optional<QByteArray> name; ///< at most 255 bytes
    uint8_t attributes = 0;
    QByteArray data;
};

/// The resources of one fork, in the fork's order. Source of the layout: the classic resource file
/// format (header, data area, map with a list of types and one of names).
class ResourceMap {
public:
    /// An empty @p fork has no resources. nullopt if the fork is damaged: something lies outside
    /// it, or its resources share bytes.
    [[nodiscard]] static std::optional<ResourceMap> parse(QByteArrayView fork);

    [[nodiscard]] const std::vector<Resource> &resources() const { return resources_; }

    /// Null if there is none.
    [[nodiscard]] const Resource *find(uint32_t type, int16_t id) const;

    /// Replaces the resource of the same type and id, or adds this one after the others of its
    /// type.
    void put(Resource resource);

    /// False if there is none.
    [[nodiscard]] bool remove(uint32_t type, int16_t id);

    /// The bytes of the fork. nullopt if the format cannot represent it: more than 16 MB of data
    /// before the last resource, or more resources and names than 16-bit offsets reach.
    [[nodiscard]] std::optional<QByteArray> toBytes() const;

private:
    class Reader;

    static constexpr qsizetype kReservedLength = 112 + 128; ///< bytes after the header
    static constexpr uint32_t kDataOffset = ForkAreas::kHeadLength + kReservedLength;

    std::vector<Resource> resources_;
    QByteArray headerReserved_ = QByteArray(kReservedLength, '\0'); ///< as the file had them
    uint16_t attributes_ = 0;                                       ///< of the whole map
};

} // namespace MWCore
