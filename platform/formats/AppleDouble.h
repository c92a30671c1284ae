// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <QByteArray>
#include <QByteArrayView>

namespace MWCore {

/// Entry ids of AppleDouble (RFC 1740, section 5).
enum AppleDoubleId : uint32_t { kResourceForkEntry = 2, kFinderInfoEntry = 9 };

/// An AppleDouble file (RFC 1740), changed entry by entry. Every other byte is preserved: other
/// entries, attributes after the Finder information, the filler.
class AppleDouble {
public:
    /// Where an entry's content is: bytes from the start of the file, and length in bytes.
    struct Entry {
        uint32_t id;
        uint32_t offset;
        uint32_t length;
    };

    /// A new file in the form that most programs write: 32 zero bytes of Finder information and an
    /// empty resource fork.
    [[nodiscard]] static AppleDouble fresh();

    /// nullopt if @p bytes are not a complete AppleDouble file: an entry lies outside the file or
    /// overlaps another, or there are more than 64 entries, including those that a change could
    /// add.
    [[nodiscard]] static std::optional<AppleDouble> parse(const QByteArray &bytes);

    /// The entries, at most 64, of a file of @p fileSize bytes that starts with @p head. nullopt if
    /// an entry lies outside the file or overlaps another, there are more than 64, or the head does
    /// not include the whole table of entries. A head of 794 bytes is always enough.
    [[nodiscard]] static std::optional<std::vector<Entry>> entriesOf(QByteArrayView head,
                                                                     uint64_t fileSize);

    /// Whether @p head starts with the magic and a known version.
    [[nodiscard]] static bool hasMagic(QByteArrayView head);

    /// The content of the first entry @p id, null if there is none.
    [[nodiscard]] QByteArrayView content(uint32_t id) const;

    /// Overwrites the beginning of the entry @p id, which is created and extended as needed.
    void overwrite(uint32_t id, QByteArrayView beginning);

    /// Replaces the content of the entry @p id, which is created if needed.
    void replace(uint32_t id, QByteArrayView content);

    /// Whether the file stores nothing: all contents, and the bytes before, between and after them,
    /// are zero. Ignores the filler in the header and the header of an attribute block without
    /// attributes.
    [[nodiscard]] bool isEmpty() const;

    [[nodiscard]] const QByteArray &bytes() const { return bytes_; }

private:
    [[nodiscard]] Entry *find(uint32_t id);
    void addEntry(uint32_t id);
    void moveContents(uint32_t distance);
    void moveAttributes(const Entry &finderInfo, uint32_t distance);
    void writeTable();

    QByteArray bytes_;
    std::vector<Entry> entries_;
};

} // namespace MWCore
