// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/AppleDouble.h"

#include "platform/formats/BigEndian.h"
#include "platform/foundation/bytes.h"

#include <algorithm>

namespace MWCore {
namespace {

using Entry = AppleDouble::Entry;

constexpr uint32_t kMagic = 0x00051607;
constexpr uint32_t kVersions[] = {0x00020000, 0x00010000};
constexpr qsizetype kCountOffset = 24;
constexpr qsizetype kTableOffset = 26;
constexpr qsizetype kEntryLength = 12;
constexpr uint16_t kMostEntries = 64; // RFC 1740 defines 15 ids, and vendors use a handful
constexpr qsizetype kFinderInfoLength = 32;

// The attribute block that some writers put after the Finder information.
constexpr uint32_t kAttributeMagic = 0x41545452; // "ATTR"
constexpr qsizetype kAttributeBlock = kFinderInfoLength + 2;
constexpr qsizetype kAttributeTotalSize = 8;
constexpr qsizetype kAttributeDataStart = 12;
constexpr qsizetype kAttributeCount = 34;
constexpr qsizetype kAttributeTable = 36;
constexpr qsizetype kAttributeHeader = kAttributeBlock + kAttributeTable;

qsizetype tableEnd(std::size_t count) {
    return kTableOffset + kEntryLength * static_cast<qsizetype>(count);
}

/// The entries with content, sorted by offset.
std::vector<Entry> sortedByOffset(std::vector<Entry> entries) {
    std::erase_if(entries, [](const Entry &entry) { return entry.length == 0; });
    std::ranges::sort(entries, {}, &Entry::offset);
    return entries;
}

/// Whether no content overlaps another or the header, or extends beyond the end of the file.
bool areDisjoint(const std::vector<Entry> &entries, uint64_t fileSize) {
    auto free = static_cast<uint64_t>(tableEnd(entries.size()));
    for (const Entry &entry : sortedByOffset(entries)) {
        if (entry.offset < free)
            return false;
        free = static_cast<uint64_t>(entry.offset) + entry.length;
    }
    return free <= fileSize;
}

/// The number of attributes in the content of a Finder information entry.
uint16_t attributeCount(QByteArrayView content) {
    if (numberAt<uint32_t>(content, kAttributeBlock) != kAttributeMagic)
        return 0;
    return numberAt<uint16_t>(content, kAttributeBlock + kAttributeCount).value_or(0);
}

/// Whether the content is all zero, except for the header of an attribute block without attributes.
bool isEmptyFinderInfo(QByteArrayView content) {
    const bool hasBlock = numberAt<uint32_t>(content, kAttributeBlock) == kAttributeMagic;
    if (!hasBlock || attributeCount(content) > 0)
        return isZero(content);
    return isZero(content.first(kAttributeBlock)) &&
           isZero(content.sliced(std::min(kAttributeHeader, content.size())));
}

} // namespace

AppleDouble AppleDouble::fresh() {
    constexpr uint32_t kFinderInfoOffset = kTableOffset + 2 * kEntryLength;
    constexpr uint32_t kForkOffset = kFinderInfoOffset + kFinderInfoLength;
    AppleDouble file;
    appendNumber(file.bytes_, kMagic);
    appendNumber(file.bytes_, kVersions[0]);
    // The filler stays zero, as RFC 1740 says. If it were that of macOS, Samba's vfs_fruit would
    // replace the item's Finder information with that of the sidecar whenever a stream is opened.
    file.bytes_.resize(kForkOffset, '\0');
    file.entries_ = {{kFinderInfoEntry, kFinderInfoOffset, kFinderInfoLength},
                     {kResourceForkEntry, kForkOffset, 0}};
    file.writeTable();
    return file;
}

bool AppleDouble::hasMagic(QByteArrayView head) {
    const auto version = numberAt<uint32_t>(head, sizeof kMagic);
    return numberAt<uint32_t>(head, 0) == kMagic && version &&
           std::ranges::find(kVersions, *version) != std::end(kVersions);
}

std::optional<std::vector<Entry>> AppleDouble::entriesOf(QByteArrayView head, uint64_t fileSize) {
    const auto count = numberAt<uint16_t>(head, kCountOffset);
    if (!hasMagic(head) || !count || *count > kMostEntries || tableEnd(*count) > head.size())
        return std::nullopt;
    std::vector<Entry> entries;
    for (qsizetype at = kTableOffset; at < tableEnd(*count); at += kEntryLength)
        entries.push_back({qFromBigEndian<uint32_t>(head.data() + at),
                           qFromBigEndian<uint32_t>(head.data() + at + 4),
                           qFromBigEndian<uint32_t>(head.data() + at + 8)});
    return areDisjoint(entries, fileSize) ? std::optional(entries) : std::nullopt;
}

std::optional<AppleDouble> AppleDouble::parse(const QByteArray &bytes) {
    auto entries = entriesOf(bytes, static_cast<uint64_t>(bytes.size()));
    if (!entries)
        return std::nullopt;
    AppleDouble file;
    file.bytes_ = bytes;
    file.entries_ = std::move(*entries);
    const int missing = int(!file.find(kResourceForkEntry)) + int(!file.find(kFinderInfoEntry));
    if (file.entries_.size() + static_cast<std::size_t>(missing) > kMostEntries)
        return std::nullopt; // no room for the entries that we add
    return file;
}

QByteArrayView AppleDouble::content(uint32_t id) const {
    const auto entry = std::ranges::find(entries_, id, &Entry::id);
    if (entry == entries_.end())
        return {};
    return entry->length == 0 ? QByteArrayView("")
                              : QByteArrayView(bytes_).sliced(entry->offset, entry->length);
}

void AppleDouble::overwrite(uint32_t id, QByteArrayView beginning) {
    QByteArray whole = content(id).toByteArray();
    whole.replace(0, beginning.size(), beginning.toByteArray());
    replace(id, whole);
}

void AppleDouble::replace(uint32_t id, QByteArrayView content) {
    if (!find(id))
        addEntry(id);
    Entry &entry = *find(id);
    const auto length = static_cast<uint32_t>(content.size());
    const bool isLast = qsizetype(entry.offset) + entry.length >= bytes_.size();
    if (isLast && entry.length > 0) {
        bytes_.truncate(entry.offset);
    } else if (length > entry.length || entry.length == 0) {
        std::fill_n(bytes_.begin() + std::min<qsizetype>(entry.offset, bytes_.size()), entry.length,
                    '\0');
        entry.offset = static_cast<uint32_t>(bytes_.size());
    } else {
        std::fill_n(bytes_.begin() + entry.offset, entry.length, '\0');
    }
    entry.length = length;
    bytes_.resize(std::max(bytes_.size(), qsizetype(entry.offset) + length), '\0');
    std::ranges::copy(content, bytes_.begin() + entry.offset);
    writeTable();
}

bool AppleDouble::isEmpty() const {
    const QByteArrayView bytes(bytes_);
    qsizetype seen = tableEnd(entries_.size());
    for (const Entry &entry : sortedByOffset(entries_)) {
        const auto content = bytes.sliced(entry.offset, entry.length);
        const bool isEmpty =
            entry.id == kFinderInfoEntry ? isEmptyFinderInfo(content) : isZero(content);
        if (!isEmpty || !isZero(bytes.sliced(seen, entry.offset - seen)))
            return false;
        seen = qsizetype(entry.offset) + entry.length;
    }
    return isZero(bytes.sliced(seen));
}

Entry *AppleDouble::find(uint32_t id) {
    const auto entry = std::ranges::find(entries_, id, &Entry::id);
    return entry == entries_.end() ? nullptr : &*entry;
}

void AppleDouble::addEntry(uint32_t id) {
    qsizetype firstContent = bytes_.size();
    for (const Entry &entry : entries_)
        if (entry.length > 0)
            firstContent = std::min<qsizetype>(firstContent, entry.offset);
    const qsizetype end = tableEnd(entries_.size());
    if (firstContent < end + kEntryLength ||
        !isZero(QByteArrayView(bytes_).sliced(end, kEntryLength))) // bytes in use
        moveContents(kEntryLength);
    entries_.push_back({id, static_cast<uint32_t>(bytes_.size()), 0});
}

/// Inserts @p distance bytes before all contents and adjusts their offsets.
void AppleDouble::moveContents(uint32_t distance) {
    bytes_.insert(tableEnd(entries_.size()), QByteArray(distance, '\0'));
    for (Entry &entry : entries_) {
        entry.offset += distance;
        if (entry.id == kFinderInfoEntry && entry.length > 0)
            moveAttributes(entry, distance);
    }
}

void AppleDouble::moveAttributes(const Entry &finderInfo, uint32_t distance) {
    bytes_.detach();
    const auto content = QByteArrayView(bytes_).sliced(finderInfo.offset, finderInfo.length);
    const uint16_t count = attributeCount(content);
    const auto move = [&](qsizetype at) {
        if (const auto place = numberAt<uint32_t>(content, static_cast<uint64_t>(at)))
            putNumber(bytes_, finderInfo.offset + at, *place + distance);
    };
    if (numberAt<uint32_t>(content, kAttributeBlock) != kAttributeMagic)
        return;
    move(kAttributeBlock + kAttributeTotalSize);
    move(kAttributeBlock + kAttributeDataStart);
    qsizetype at = kAttributeBlock + kAttributeTable;
    for (uint16_t index = 0; index < count; ++index) {
        constexpr qsizetype kNameLength = 10;
        const auto nameLength = numberAt<uint8_t>(content, static_cast<uint64_t>(at + kNameLength));
        if (!nameLength)
            return;
        move(at);
        at += (kNameLength + 1 + *nameLength + 3) & ~qsizetype(3);
    }
}

void AppleDouble::writeTable() {
    putNumber(bytes_, kCountOffset, static_cast<uint16_t>(entries_.size()));
    qsizetype at = kTableOffset;
    for (const Entry &entry : entries_) {
        putNumber(bytes_, at, entry.id);
        putNumber(bytes_, at + 4, entry.offset);
        putNumber(bytes_, at + 8, entry.length);
        at += kEntryLength;
    }
}

} // namespace MWCore
