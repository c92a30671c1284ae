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

/// What an AppleDouble file keeps beside a file (RFC 1740), changed entry by entry. Every byte that
/// is not asked for stays: other entries, attributes behind the Finder information, the filler.
class AppleDouble {
public:
    /// Where an entry's content is, in bytes from the start of the file.
    struct Entry {
        uint32_t id;
        uint32_t offset;
        uint32_t length;
    };

    /// A file in the form that most programs write: 32 bytes of Finder information, all zero, and
    /// an empty resource fork.
    [[nodiscard]] static AppleDouble fresh();

    /// Nothing when @p bytes are no whole AppleDouble file: an entry lies outside or in another, or
    /// there are more than 64, those included that changing it could add.
    [[nodiscard]] static std::optional<AppleDouble> parse(const QByteArray &bytes);

    /// The entries of a file of @p fileSize bytes that begins with @p head, at most 64; nothing as
    /// above, and when the table of entries is longer than the head. 794 bytes are enough.
    [[nodiscard]] static std::optional<std::vector<Entry>> entriesOf(QByteArrayView head,
                                                                     uint64_t fileSize);

    /// Whether @p head starts with the magic and a known version.
    [[nodiscard]] static bool hasMagic(QByteArrayView head);

    /// The content of the first entry @p id, null when there is none.
    [[nodiscard]] QByteArrayView content(uint32_t id) const;

    /// Overwrites the beginning of the entry @p id, which is made and lengthened as needed.
    void overwrite(uint32_t id, QByteArrayView beginning);

    /// Gives the entry @p id, which is made if needed, new content.
    void replace(uint32_t id, QByteArrayView content);

    /// Whether nobody would miss the file: all that it keeps is zero or empty, also before, between
    /// and behind the contents. The header's filler does not count.
    [[nodiscard]] bool isVoid() const;

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
