// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>
#include <string>

#include <QByteArray>

#include <sys/xattr.h>

/// Samples of foreign metadata, built byte by byte as other programs write them.
namespace samples {

// Types of resources.
constexpr uint32_t kAlias = 0x616C6973; // 'alis'
constexpr uint32_t kIcns = 0x69636E73;
constexpr uint32_t kText = 0x53545220; // 'STR '

inline QByteArray hex(const char *text) {
    return QByteArray::fromHex(text);
}

inline QByteArray zeros(qsizetype count) {
    return QByteArray(count, '\0');
}

inline QByteArray number32(uint32_t number) {
    return hex(QByteArray::number(number, 16).rightJustified(8, '0'));
}

inline QByteArray number16(uint16_t number) {
    return hex(QByteArray::number(number, 16).rightJustified(4, '0'));
}

/// 32 bytes of Finder information: 'TEXT', 'ttxt', the flags, a location, and something in the
/// extended part.
inline QByteArray finderInfo(uint16_t flags) {
    return "TEXTttxt" + number16(flags) + hex("00100020") + zeros(2) + hex("0102030405060708") +
           zeros(8);
}

/// The AppleDouble record that Netatalk stores in an extended attribute: eight entries, 402 bytes.
inline QByteArray netatalkRecord(uint16_t flags) {
    struct Entry {
        uint32_t id, offset, length;
    };
    constexpr Entry entries[] = {
        {9, 122, 32},         {4, 154, 0},          {8, 354, 16},         {14, 370, 4},
        {0x80444556, 374, 8}, {0x80494E4F, 382, 8}, {0x8053594E, 390, 8}, {0x8053567E, 398, 4},
    };
    QByteArray record = hex("0005160700020000") + "Netatalk        " + number16(8);
    for (const Entry &entry : entries)
        record += number32(entry.id) + number32(entry.offset) + number32(entry.length);
    return record + finderInfo(flags) + QByteArray(200, 'c') + hex("1111111122222222") +
           hex("8000000044444444") + hex("00000000") + "dev12345" + "ino12345" + "syn12345" +
           "svid";
}

/// The AFP information that Samba's vfs_fruit stores; some versions store a byte more.
inline QByteArray afpInfo(uint16_t flags, bool withTrailingByte) {
    return "AFP" + zeros(1) + hex("00000100") + zeros(4) + hex("80000000") + finderInfo(flags) +
           hex("060708090a0b") + zeros(6) + (withTrailingByte ? zeros(1) : QByteArray());
}

/// One attribute named "user.mwcore.note" in the block after the Finder information. Its offsets
/// count from the start of the file.
inline QByteArray attributeBlock(uint32_t at, const QByteArray &value) {
    const QByteArray name = QByteArray("user.mwcore.note") + zeros(1);
    const QByteArray entryHead = hex("0000") + QByteArray(1, static_cast<char>(name.size()));
    const qsizetype entryLength = (8 + entryHead.size() + name.size() + 3) & ~3;
    const auto data = static_cast<uint32_t>(at + 36 + entryLength);
    const auto length = static_cast<uint32_t>(value.size());
    QByteArray entry = number32(data) + number32(length) + entryHead + name;
    entry += zeros(entryLength - entry.size());
    return "ATTR" + zeros(4) + number32(data + length) + number32(data) + number32(length) +
           zeros(12) + number16(0) + number16(1) + entry + value;
}

/// A resource fork with one resource 'icns' -16455 without a name and one 'STR ' 128 with one.
inline QByteArray resourceFork() {
    const QByteArray data = number32(3) + "abc" + number32(5) + "hello";
    const QByteArray map = zeros(16 + 6) + number16(0) + number16(28) + number16(28 + 2 + 16 + 24) +
                           number16(1) + "icns" + number16(0) + number16(18) + "STR " +
                           number16(0) + number16(30) + hex("bfb9ffff00000000") + zeros(4) +
                           hex("0080000020000007") + zeros(4) + "\x05title";
    return number32(256) + number32(256 + static_cast<uint32_t>(data.size())) +
           number32(static_cast<uint32_t>(data.size())) +
           number32(static_cast<uint32_t>(map.size())) + QByteArray(240, 'r') + data + map;
}

/// A sidecar in the usual form: Finder information at offset 50, an attribute block after it, and
/// the fork.
inline QByteArray sidecar(uint16_t flags, const QByteArray &note = "keep me") {
    const QByteArray info = finderInfo(flags) + zeros(2) + attributeBlock(84, note);
    return hex("0005160700020000") + "Mac OS X        " + number16(2) + number32(9) + number32(50) +
           number32(static_cast<uint32_t>(info.size())) + number32(2) +
           number32(50 + static_cast<uint32_t>(info.size())) +
           number32(static_cast<uint32_t>(resourceFork().size())) + info + resourceFork();
}

} // namespace samples
