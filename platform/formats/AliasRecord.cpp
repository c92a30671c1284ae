// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/AliasRecord.h"

#include "platform/formats/BigEndian.h"

#include <climits>

namespace MWCore {
namespace {

constexpr uint32_t kMagic = 0x4D57414C; // "MWAL"
constexpr uint16_t kVersion = 1;

/// Fields follow the header as tag, length and content, in any order. Unknown tags are skipped, so
/// that later versions can add some.
enum Tag : uint16_t {
    kPath = 1,
    kRealPath = 2, ///< omitted if equal to kPath
    kDevice = 3,
    kInode = 4,
    kBirthTime = 5, ///< omitted if unknown
    kHandle = 6,    ///< type, then the bytes; omitted if there is none
    kFileSystem = 7,
    kMountPointLength = 8,
    kAncestors = 9,
    kFileSystemType = 10, ///< omitted if unknown
    kSource = 11,         ///< omitted if unknown
};

constexpr qsizetype kLongestPath = PATH_MAX - 1;
static_assert(AliasRecord::kLongest >= 3UL * PATH_MAX + sizeof(uint64_t) * (PATH_MAX / 2) + 1024,
              "two paths, a source, the folders of a path, and the small fields");

void appendField(QByteArray &bytes, Tag tag, QByteArrayView content) {
    appendNumber(bytes, static_cast<uint16_t>(tag));
    appendNumber(bytes, static_cast<uint32_t>(content.size()));
    bytes.append(content);
}

template <std::integral Number> void appendNumberField(QByteArray &bytes, Tag tag, Number number) {
    QByteArray content;
    appendNumber(content, number);
    appendField(bytes, tag, content);
}

bool readText(QByteArrayView content, QByteArray &text) {
    text = content.toByteArray();
    return text.size() <= kLongestPath && !text.contains('\0');
}

bool readPath(QByteArrayView content, QByteArray &path) {
    return readText(content, path) && path.startsWith('/');
}

template <std::integral Number, typename Field>
bool readNumber(QByteArrayView content, Field &field) {
    const auto number = numberAt<Number>(content, 0);
    if (number)
        field = *number;
    return number && content.size() == sizeof(Number);
}

bool readHandle(QByteArrayView content, FileIdentity &identity) {
    const auto type = numberAt<int32_t>(content, 0);
    const qsizetype length = content.size() - qsizetype(sizeof *type);
    if (!type || length == 0 || length > kLongestHandle)
        return false;
    identity.handleType = *type;
    identity.handle = content.sliced(sizeof *type).toByteArray();
    return true;
}

bool readAncestors(QByteArrayView content, std::vector<uint64_t> &ancestors) {
    ancestors.clear();
    for (uint64_t at = 0; const auto inode = numberAt<uint64_t>(content, at); at += sizeof *inode)
        ancestors.push_back(*inode);
    return content.size() % qsizetype(sizeof(uint64_t)) == 0;
}

bool readField(uint16_t tag, QByteArrayView content, AliasRecord &record) {
    switch (tag) {
    case kPath:
        return readPath(content, record.path);
    case kRealPath:
        return readPath(content, record.realPath);
    case kDevice:
        return readNumber<uint64_t>(content, record.identity.device);
    case kInode:
        return readNumber<uint64_t>(content, record.identity.inode);
    case kBirthTime:
        return readNumber<int64_t>(content, record.identity.birthTime);
    case kHandle:
        return readHandle(content, record.identity);
    case kFileSystem:
        return readNumber<uint64_t>(content, record.fileSystem);
    case kMountPointLength:
        return readNumber<uint32_t>(content, record.mountPointLength);
    case kAncestors:
        return readAncestors(content, record.ancestors);
    case kFileSystemType:
        return readText(content, record.fileSystemType);
    case kSource:
        return readText(content, record.source);
    default:
        return true;
    }
}

} // namespace

QByteArray AliasRecord::toBytes() const {
    QByteArray bytes;
    appendNumber(bytes, kMagic);
    appendNumber(bytes, kVersion);
    appendField(bytes, kPath, path);
    if (realPath != path)
        appendField(bytes, kRealPath, realPath);
    appendNumberField(bytes, kDevice, identity.device);
    appendNumberField(bytes, kInode, identity.inode);
    if (identity.birthTime)
        appendNumberField(bytes, kBirthTime, *identity.birthTime);
    if (!identity.handle.isEmpty()) {
        QByteArray handle;
        appendNumber(handle, identity.handleType);
        appendField(bytes, kHandle, handle + identity.handle);
    }
    appendNumberField(bytes, kFileSystem, fileSystem);
    appendNumberField(bytes, kMountPointLength, mountPointLength);
    QByteArray inodes;
    for (const uint64_t inode : ancestors)
        appendNumber(inodes, inode);
    appendField(bytes, kAncestors, inodes);
    if (!fileSystemType.isEmpty())
        appendField(bytes, kFileSystemType, fileSystemType);
    if (!source.isEmpty())
        appendField(bytes, kSource, source);
    return bytes;
}

std::optional<AliasRecord> AliasRecord::parse(QByteArrayView bytes) {
    if (bytes.size() > kLongest || numberAt<uint32_t>(bytes, 0) != kMagic ||
        numberAt<uint16_t>(bytes, sizeof kMagic) != kVersion)
        return std::nullopt;
    AliasRecord record;
    auto at = static_cast<uint64_t>(sizeof kMagic + sizeof kVersion);
    while (at < static_cast<uint64_t>(bytes.size())) {
        const auto tag = numberAt<uint16_t>(bytes, at);
        const auto length = numberAt<uint32_t>(bytes, at + sizeof(uint16_t));
        if (!length)
            return std::nullopt;
        at += sizeof(uint16_t) + sizeof(uint32_t);
        const auto content = bytesAt(bytes, at, *length);
        if (!content || !readField(*tag, *content, record))
            return std::nullopt;
        at += *length;
    }
    if (record.realPath.isEmpty())
        record.realPath = record.path;
    if (record.path.isEmpty() || record.mountPointLength > record.realPath.size())
        return std::nullopt;
    return record;
}

} // namespace MWCore
