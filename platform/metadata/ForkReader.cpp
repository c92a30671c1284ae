// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/metadata/ForkReader.h"

#include "platform/formats/BigEndian.h"
#include "platform/formats/ResourceLocation.h"
#include "platform/metadata/ForkAttributes.h"

#include <algorithm>

namespace MWCore {

std::optional<ForkReader> ForkReader::open(const QByteArray &path, OSStatus *status) {
    const AttributeNames names(path);
    *status = statusOfNames(path, names);
    if (*status != noErr)
        return std::nullopt;
    const ForkAttribute *const place = forkAttribute(names);
    return place ? ofAttribute(path, *place, status) : ofSidecar(path, status);
}

std::optional<ForkReader> ForkReader::ofAttribute(const QByteArray &path,
                                                  const ForkAttribute &place, OSStatus *status) {
    ForkReader reader;
    auto value = attribute(path, place.name, status); // the kernel limits its length
    if (value)
        value->truncate(place.forkLength(value->size()));
    if (value && value->isEmpty())
        *status = resFNotFound;
    if (*status != noErr)
        return std::nullopt;
    reader.value_ = std::move(*value);
    reader.length_ = static_cast<uint64_t>(reader.value_.size());
    return reader;
}

std::optional<ForkReader> ForkReader::ofSidecar(const QByteArray &path, OSStatus *status) {
    ForkReader reader;
    reader.sidecar_ = openSidecarEntry(path, kResourceForkEntry, status);
    if (*status == noErr && (!reader.sidecar_ || reader.sidecar_->entry.length == 0))
        *status = resFNotFound;
    if (*status != noErr)
        return std::nullopt;
    reader.length_ = reader.sidecar_->entry.length;
    return reader;
}

QByteArray ForkReader::read(uint64_t offset, uint64_t length) const {
    const uint64_t from = std::min(offset, length_);
    const auto wanted = static_cast<int64_t>(std::min(length, length_ - from));
    if (!sidecar_)
        return value_.mid(static_cast<qsizetype>(from), wanted);
    OSStatus status = noErr;
    const int64_t begin = sidecar_->entry.offset;
    return sidecar_->read(begin + static_cast<int64_t>(from), wanted, &status)
        .value_or(QByteArray());
}

std::optional<QByteArray> ForkReader::whole(OSStatus *status) const {
    *status =
        length_ > kLargestSidecar ? fileBoundsErr : noErr; // a sparse file can have any length
    if (*status != noErr)
        return std::nullopt;
    return sidecar_ ? sidecar_->read(sidecar_->entry.offset, int64_t(length_), status)
                    : std::optional(value_);
}

std::optional<QByteArray> ForkReader::firstResource(uint32_t type, uint64_t longest) const {
    constexpr uint64_t kLongestMap = 65536; // its offsets have 16 bits
    const auto areas = forkAreasOf(read(0, ForkAreas::kHeadLength), length());
    const auto map =
        areas ? read(areas->map, std::min(areas->mapLength, kLongestMap)) : QByteArray();
    const auto offset = firstResourceOffset(map, type);
    if (!offset || *offset > areas->dataLength)
        return std::nullopt;
    const uint64_t rest = areas->dataLength - *offset;
    const auto size = numberAt<uint32_t>(read(areas->data + *offset, sizeof(uint32_t)), 0);
    if (!size || *size > longest || *size + sizeof *size > rest)
        return std::nullopt;
    return read(areas->data + *offset + sizeof *size, *size);
}

} // namespace MWCore
