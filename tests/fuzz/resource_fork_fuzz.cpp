// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/ResourceMap.h"
#include "tests/fuzz/fuzz.h"

using namespace MWCore;

/// A fork that can be read can be written and read again with the same resources, and never holds
/// more than its bytes justify.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size) {
    auto map = ResourceMap::parse(inputBytes(data, size));
    if (!map)
        return 0;
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
