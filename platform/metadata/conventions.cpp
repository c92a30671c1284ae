// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/metadata/conventions.h"

#include "platform/formats/AppleDouble.h"
#include "platform/formats/BigEndian.h"

#include <algorithm>

namespace MWCore {
namespace {

/// The 32 bytes alone, as several independent tools store them.
namespace Bare {

std::optional<FinderInfo> read(const QByteArray &value) {
    return value.size() == FinderInfo::kLength ? std::optional(FinderInfo::fromBytes(value))
                                               : std::nullopt;
}

QByteArray rewritten(const QByteArray & /*value*/, const FinderInfo &info) {
    return info.isNone() ? QByteArray() : info.toBytes();
}

} // namespace Bare

/// An AppleDouble file in an attribute, as Netatalk stores it.
namespace Record {

constexpr qsizetype kLongest = 4096; ///< ten times what its writers store
std::optional<FinderInfo> read(const QByteArray &value) {
    const auto record = AppleDouble::parse(value);
    const QByteArrayView content = record ? record->content(kFinderInfoEntry) : QByteArrayView();
    return content.size() >= FinderInfo::kLength ? std::optional(FinderInfo::fromBytes(content))
                                                 : std::nullopt;
}

QByteArray rewritten(const QByteArray &value, const FinderInfo &info) {
    auto record = AppleDouble::parse(value);
    record->overwrite(kFinderInfoEntry, info.toBytes());
    return record->bytes();
}

} // namespace Record

/// The AFP information of 60 bytes, as Samba's vfs_fruit stores it in a stream; some versions store
/// one byte more.
namespace Stream {

constexpr QByteArrayView kMagic("AFP\0", 4);
constexpr uint32_t kVersions[] = {0x00000100, 0x00010000};
constexpr qsizetype kLengths[] = {60, 61};
constexpr qsizetype kFinderInfoOffset = 16;

std::optional<FinderInfo> read(const QByteArray &value) {
    const bool isAfpInfo =
        std::ranges::find(kLengths, value.size()) != std::end(kLengths) &&
        value.startsWith(kMagic) &&
        std::ranges::find(kVersions, numberAt<uint32_t>(value, 4)) != std::end(kVersions);
    return isAfpInfo ? std::optional(
                           FinderInfo::fromBytes(QByteArrayView(value).sliced(kFinderInfoOffset)))
                     : std::nullopt;
}

QByteArray rewritten(const QByteArray &value, const FinderInfo &info) {
    QByteArray changed = value;
    return changed.replace(kFinderInfoOffset, FinderInfo::kLength, info.toBytes());
}

} // namespace Stream

constexpr Convention kConventions[] = {
    {"user.com.apple.FinderInfo", FinderInfo::kLength, Bare::read, Bare::rewritten},
    {"user.org.netatalk.Metadata", Record::kLongest, Record::read, Record::rewritten},
    {"user.DosStream.AFP_AfpInfo:$DATA", Stream::kLengths[1], Stream::read, Stream::rewritten},
    {"user.AFP_AfpInfo", Stream::kLengths[1], Stream::read,
     Stream::rewritten}, // prefix=user., store_stream_type=no
};

} // namespace

std::span<const Convention> conventions() {
    return kConventions;
}

} // namespace MWCore
