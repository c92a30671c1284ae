// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/ResourceLocation.h"

#include "platform/formats/BigEndian.h"

namespace MWCore {

std::optional<ForkAreas> forkAreasOf(QByteArrayView head, uint64_t length) {
    const auto data = numberAt<uint32_t>(head, 0);
    const auto map = numberAt<uint32_t>(head, 4);
    const auto dataLength = numberAt<uint32_t>(head, 8);
    const auto mapLength = numberAt<uint32_t>(head, 12);
    if (!mapLength || uint64_t(*data) + *dataLength > length ||
        uint64_t(*map) + *mapLength > length)
        return std::nullopt;
    return ForkAreas{*data, *dataLength, *map, *mapLength};
}

std::optional<uint32_t> firstResourceOffset(QByteArrayView map, uint32_t type) {
    const auto types = numberAt<uint16_t>(map, kMapTypeList);
    const auto last = types ? numberAt<uint16_t>(map, *types) : std::nullopt;
    if (!last)
        return std::nullopt;
    const uint16_t count = *last + 1; // 0xFFFF: none
    for (uint16_t index = 0; index < count; ++index) {
        const uint64_t at = *types + sizeof count + index * kTypeLength;
        const auto code = numberAt<uint32_t>(map, at);
        const auto references = numberAt<uint16_t>(map, at + 6);
        if (!references)
            return std::nullopt;
        if (code == type) {
            const auto place = numberAt<uint32_t>(map, uint64_t(*types) + *references + 4);
            return place ? std::optional(*place & kLargestOffset) : std::nullopt;
        }
    }
    return std::nullopt;
}

} // namespace MWCore
