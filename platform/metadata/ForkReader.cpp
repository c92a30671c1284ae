// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/metadata/ForkReader.h"

#include "platform/files/RegularFile.h"
#include "platform/formats/AppleDouble.h"
#include "platform/metadata/ExtendedAttributes.h"
#include "platform/metadata/fork_attributes.h"
#include "platform/metadata/Sidecar.h"

#include <algorithm>

#include <sys/stat.h>

namespace MWCore {
namespace {

constexpr int64_t kLongestTable = 16384; ///< of the entries of a sidecar, bytes

} // namespace

std::optional<ForkReader> ForkReader::open(const QByteArray &path, OSStatus *status) {
    const AttributeNames names(path);
    *status = statusOfNames(path, names);
    if (*status != noErr)
        return std::nullopt;
    for (const ForkPlace &place : kForkPlaces)
        if (names.contains(place.name))
            return ofAttribute(path, place, status);
    return ofSidecar(path, status);
}

std::optional<ForkReader> ForkReader::ofAttribute(const QByteArray &path, const ForkPlace &place,
                                                  OSStatus *status) {
    ForkReader reader;
    auto value = attribute(path, place.name, status); // whose length the system bounds
    if (value)
        value->chop(place.trailing);
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
    struct stat item = {};
    const QByteArray file = sidecarPath(path);
    reader.sidecar_ = file.isEmpty() ? Descriptor() : openRegularFile(file, Links::Keep, status);
    if (!reader.sidecar_ || fstat(reader.sidecar_.number(), &item) != 0) {
        *status = *status == noErr || *status == fnfErr ? resFNotFound : *status;
        return std::nullopt;
    }
    const auto head = readAt(reader.sidecar_.number(), 0, kLongestTable, status);
    if (!head)
        return std::nullopt;
    const auto entries = AppleDouble::entriesOf(*head, static_cast<uint64_t>(item.st_size));
    *status = entries || !AppleDouble::hasMagic(*head) ? resFNotFound : mapReadErr;
    for (const auto &entry : entries.value_or(std::vector<AppleDouble::Entry>()))
        if (entry.id == kResourceForkEntry && entry.length > 0) {
            *status = noErr;
            reader.begin_ = entry.offset;
            reader.length_ = entry.length;
            return reader;
        }
    return std::nullopt;
}

QByteArray ForkReader::read(uint64_t offset, uint64_t length) const {
    const uint64_t rest = length_ - std::min(offset, length_);
    const auto wanted = static_cast<int64_t>(std::min(length, rest));
    if (!sidecar_)
        return value_.mid(static_cast<qsizetype>(std::min(offset, length_)), wanted);
    OSStatus status = noErr;
    return readAt(sidecar_.number(), static_cast<int64_t>(begin_ + offset), wanted, &status)
        .value_or(QByteArray());
}

} // namespace MWCore
