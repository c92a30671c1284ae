// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/ResourceMap.h"

#include "platform/formats/BigEndian.h"
#include "platform/formats/ResourceLocation.h"

#include <algorithm>
#include <limits>

namespace MWCore {
namespace {

// In the map, which begins with a copy of the header, a handle and a file number.
constexpr uint64_t kMapAttributes = 22;
constexpr uint64_t kMapNameList = 26;
constexpr uint64_t kMapHeaderLength = 28;

constexpr uint64_t kReferenceLength = 12;
constexpr uint16_t kNoName = 0xFFFF;

struct Type {
    uint32_t code;
    std::vector<const Resource *> resources;
};

/// The resources by type, in the order in which the types first occur.
std::vector<Type> byType(const std::vector<Resource> &resources) {
    std::vector<Type> types;
    for (const Resource &resource : resources) {
        auto type = std::ranges::find(types, resource.type, &Type::code);
        if (type == types.end())
            type = types.insert(types.end(), {resource.type, {}});
        type->resources.push_back(&resource);
    }
    return types;
}

/// Parts of a fork while it is being written.
struct Areas {
    QByteArray data;
    QByteArray references;
    QByteArray names;
};

/// False if an offset would be too large.
bool append(Areas &areas, const Resource &resource) {
    const qsizetype name = areas.names.size();
    if (areas.data.size() > kLargestOffset || (resource.name && name >= kNoName))
        return false;
    appendNumber(areas.references, resource.id);
    appendNumber(areas.references, resource.name ? static_cast<uint16_t>(name) : kNoName);
    appendNumber(areas.references, static_cast<uint32_t>(resource.attributes) << 24 |
                                       static_cast<uint32_t>(areas.data.size()));
    appendNumber(areas.references, uint32_t(0));
    appendNumber(areas.data, static_cast<uint32_t>(resource.data.size()));
    areas.data += resource.data;
    if (resource.name) {
        areas.names += static_cast<char>(resource.name->size());
        areas.names += *resource.name;
    }
    return true;
}

} // namespace

/// Reads a fork. Every offset is checked, and the total read from each area must not exceed its
/// size, so that memory is linear in the size of any input.
class ResourceMap::Reader {
public:
    explicit Reader(QByteArrayView fork) : fork_(fork) {}

    [[nodiscard]] bool readInto(ResourceMap &map) {
        if (!readHeader(map))
            return false;
        const auto typeList = numberAt<uint16_t>(map_, kMapTypeList);
        const auto nameList = numberAt<uint16_t>(map_, kMapNameList);
        if (!typeList || !nameList)
            return false;
        typeList_ = *typeList;
        nameList_ = *nameList;
        const auto last = numberAt<uint16_t>(map_, typeList_);
        if (!last)
            return false;
        const uint16_t count = *last + 1; // 0xFFFF: none
        for (uint16_t index = 0; index < count; ++index)
            if (!readType(typeList_ + 2 + index * kTypeLength, map))
                return false;
        return true;
    }

private:
    [[nodiscard]] bool readHeader(ResourceMap &map) {
        const auto areas = forkAreasOf(fork_, uint64_t(fork_.size()));
        if (!areas)
            return false;
        data_ = fork_.sliced(qsizetype(areas->data), qsizetype(areas->dataLength));
        map_ = fork_.sliced(qsizetype(areas->map), qsizetype(areas->mapLength));
        if (areas->data >= kDataOffset && areas->map >= kDataOffset)
            map.headerReserved_ =
                fork_.sliced(ForkAreas::kHeadLength, kReservedLength).toByteArray();
        map.attributes_ = numberAt<uint16_t>(map_, kMapAttributes).value_or(0);
        return true;
    }

    [[nodiscard]] bool readType(uint64_t at, ResourceMap &map) {
        const auto code = numberAt<uint32_t>(map_, at);
        const auto last = numberAt<uint16_t>(map_, at + 4);
        const auto references = numberAt<uint16_t>(map_, at + 6);
        if (!references)
            return false;
        for (uint32_t index = 0; index <= *last; ++index)
            if (!readReference(*code, typeList_ + *references + index * kReferenceLength, map))
                return false;
        return true;
    }

    [[nodiscard]] bool readReference(uint32_t type, uint64_t at, ResourceMap &map) {
        const auto id = numberAt<int16_t>(map_, at);
        const auto name = numberAt<uint16_t>(map_, at + 2);
        const auto place = numberAt<uint32_t>(map_, at + 4);
        references_ += kReferenceLength;
        if (!numberAt<uint32_t>(map_, at + 8) || references_ > map_.size())
            return false;
        Resource resource = {type, *id, std::nullopt, static_cast<uint8_t>(*place >> 24), {}};
        if (*name != kNoName && !readName(*name, resource))
            return false;
        if (!readData(*place & kLargestOffset, resource))
            return false;
        map.resources_.push_back(std::move(resource));
        return true;
    }

    [[nodiscard]] bool readName(uint16_t offset, Resource &resource) {
        const uint64_t at = uint64_t(nameList_) + offset;
        const auto length = numberAt<uint8_t>(map_, at);
        const auto name = length ? bytesAt(map_, at + 1, *length) : std::nullopt;
        if (!name)
            return false;
        names_ += 1 + *length;
        resource.name = name->toByteArray();
        return names_ <= map_.size();
    }

    [[nodiscard]] bool readData(uint32_t offset, Resource &resource) {
        const auto length = numberAt<uint32_t>(data_, offset);
        const auto data = length ? bytesAt(data_, offset + sizeof *length, *length) : std::nullopt;
        if (!data)
            return false;
        read_ += sizeof *length + *length;
        resource.data = data->toByteArray();
        return read_ <= static_cast<uint64_t>(data_.size());
    }

    QByteArrayView fork_;
    QByteArrayView data_;
    QByteArrayView map_;
    uint16_t typeList_ = 0; ///< offset in the map
    uint16_t nameList_ = 0; ///< offset in the map
    // Bytes read so far.
    uint64_t read_ = 0;
    qsizetype references_ = 0;
    qsizetype names_ = 0;
};

std::optional<ResourceMap> ResourceMap::parse(QByteArrayView fork) {
    ResourceMap map;
    if (fork.isEmpty() || Reader(fork).readInto(map))
        return map;
    return std::nullopt;
}

const Resource *ResourceMap::find(uint32_t type, int16_t id) const {
    const auto found = std::ranges::find_if(resources_, [=](const Resource &resource) {
        return resource.type == type && resource.id == id;
    });
    return found == resources_.end() ? nullptr : &*found;
}

void ResourceMap::put(Resource resource) {
    resource.name = resource.name ? std::optional(resource.name->left(UINT8_MAX)) : std::nullopt;
    if (const Resource *const there = find(resource.type, resource.id))
        resources_[static_cast<std::size_t>(there - resources_.data())] = std::move(resource);
    else
        resources_.push_back(std::move(resource));
}

bool ResourceMap::remove(uint32_t type, int16_t id) {
    const Resource *const there = find(type, id);
    if (!there)
        return false;
    resources_.erase(resources_.begin() + (there - resources_.data()));
    return true;
}

std::optional<QByteArray> ResourceMap::toBytes() const {
    constexpr auto kFarthest = std::numeric_limits<uint16_t>::max();
    if (resources_.size() > kFarthest / kReferenceLength)
        return std::nullopt; // before any time is spent on sorting by type
    const std::vector<Type> types = byType(resources_);
    Areas areas;
    QByteArray typeList;
    appendNumber(typeList, static_cast<uint16_t>(types.size() - 1));
    const qsizetype typeListLength =
        qsizetype(sizeof(uint16_t)) + qsizetype(types.size()) * qsizetype(kTypeLength);
    for (const Type &type : types) {
        appendNumber(typeList, type.code);
        appendNumber(typeList, static_cast<uint16_t>(type.resources.size() - 1));
        appendNumber(typeList, static_cast<uint16_t>(typeListLength + areas.references.size()));
        for (const Resource *const resource : type.resources)
            if (!append(areas, *resource))
                return std::nullopt;
    }
    const qsizetype nameList =
        qsizetype(kMapHeaderLength) + typeListLength + areas.references.size();
    if (nameList > std::numeric_limits<uint16_t>::max())
        return std::nullopt;
    const auto dataLength = static_cast<uint32_t>(areas.data.size());
    QByteArray header;
    appendNumber(header, kDataOffset);
    appendNumber(header, kDataOffset + dataLength);
    appendNumber(header, dataLength);
    appendNumber(header, static_cast<uint32_t>(nameList + areas.names.size()));
    QByteArray map = header + QByteArray(4 + 2, '\0');
    appendNumber(map, attributes_);
    appendNumber(map, static_cast<uint16_t>(kMapHeaderLength));
    appendNumber(map, static_cast<uint16_t>(nameList));
    return header + headerReserved_ + areas.data + map + typeList + areas.references + areas.names;
}

} // namespace MWCore
