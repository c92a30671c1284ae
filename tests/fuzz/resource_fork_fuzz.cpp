// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/BigEndian.h"
#include "platform/formats/ResourceLocation.h"
#include "platform/formats/ResourceMap.h"
#include "tests/fuzz/fuzz.h"

#include <algorithm>

using namespace MWCore;

namespace {

/// The first resource of @p type; nullopt if there is none.
std::optional<QByteArrayView> firstOfType(QByteArrayView fork, uint32_t type) {
    const auto areas = forkAreasOf(fork.first(std::min(fork.size(), ForkAreas::kHeadLength)),
                                   static_cast<uint64_t>(fork.size()));
    const auto map = areas ? bytesAt(fork, areas->map, areas->mapLength) : std::nullopt;
    const auto offset = map ? firstResourceOffset(*map, type) : std::nullopt;
    const auto length = offset ? numberAt<uint32_t>(fork, areas->data + *offset) : std::nullopt;
    return length ? bytesAt(fork, areas->data + *offset + sizeof *length, *length) : std::nullopt;
}

} // namespace

/// A parsed fork can be written and parsed again with the same resources, and holds no more bytes
/// than the input justifies. The first resource of a type is found without parsing the others.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size) {
    const QByteArray fork = inputBytes(data, size);
    auto map = ResourceMap::parse(fork);
    if (!map) {
        (void)firstOfType(fork, 0);
        return 0;
    }
    if (!map->resources().empty()) {
        const Resource &first = map->resources().front();
        require(firstOfType(fork, first.type) == QByteArrayView(first.data));
    }
    std::size_t held = 0;
    for (const Resource &resource : map->resources())
        held += static_cast<std::size_t>(resource.data.size()) +
                static_cast<std::size_t>(resource.name.value_or(QByteArray()).size());
    require(held <= 2 * size);
    map->put({0x69636E73, -16455, std::nullopt, 0, "an icon"});
    const auto bytes = map->toBytes();
    if (!bytes)
        return 0;
    const auto again = ResourceMap::parse(*bytes);
    require(again && again->resources().size() == map->resources().size());
    for (const Resource &resource : map->resources()) {
        const Resource *const found = again->find(resource.type, resource.id);
        const Resource *const first = map->find(resource.type, resource.id);
        require(found && found->data == first->data && found->name == first->name);
    }
    return 0;
}
