// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/text/NameOrder.h"

#include "platform/foundation/FileSystemText.h"

#include <algorithm>
#include <string_view>

#include <QString>

namespace MWCore {
namespace {

QByteArray foldedBeyondAscii(QByteArrayView name) {
    const QString text = stringWithFileSystemRepresentation(name);
    QString folded;
    for (qsizetype index = 0; index < text.size(); ++index) {
        const QChar unit = text[index];
        const bool isPair =
            unit.isHighSurrogate() && index + 1 < text.size() && text[index + 1].isLowSurrogate();
        if (isPair)
            folded +=
                QChar::fromUcs4(QChar::toCaseFolded(QChar::surrogateToUcs4(unit, text[++index])));
        else
            folded += unit.toCaseFolded();
    }
    return cString(folded);
}

/// Appends a key; keys compare bytewise as their names do, because UTF-8 preserves the order of
/// code points.
void appendKey(QByteArrayView name, std::string &key) {
    const std::size_t start = key.size();
    key.append(name.data(), static_cast<std::size_t>(name.size()));
    for (std::size_t index = start; index < key.size(); ++index) {
        const char character = key[index];
        if (static_cast<signed char>(character) < 0) {
            key.resize(index);
            key += foldedBeyondAscii(name.sliced(qsizetype(index - start))).toStdString();
            return;
        }
        if (character >= 'A' && character <= 'Z')
            key[index] = static_cast<char>(character | 0x20);
    }
}

/// A key without the prefix that all keys have in common. Most differ in their first eight bytes.
struct Entry {
    uint64_t head = 0; ///< the first eight bytes, most significant first, padded with 0
    std::string_view rest;
    uint32_t index;

    Entry(std::string_view key, uint32_t nameIndex) : index(nameIndex) {
        const std::size_t length = std::min(key.size(), sizeof head);
        for (std::size_t at = 0; at < length; ++at)
            head |= uint64_t(static_cast<unsigned char>(key[at])) << (56 - 8 * at);
        rest = key.substr(length);
    }

    [[nodiscard]] bool isAfter(const Entry &other) const {
        return head != other.head ? head > other.head : rest > other.rest;
    }
};

std::size_t commonLength(std::string_view one, std::string_view other) {
    const std::size_t length = std::min(one.size(), other.size());
    return static_cast<std::size_t>(
        std::mismatch(one.begin(), one.begin() + std::ptrdiff_t(length), other.begin()).first -
        one.begin());
}

} // namespace

int compareNames(QByteArrayView one, QByteArrayView other) {
    std::string oneKey;
    std::string otherKey;
    appendKey(one, oneKey);
    appendKey(other, otherKey);
    return oneKey.compare(otherKey);
}

void NameSorter::add(QByteArrayView name) {
    appendKey(name, keys_);
    ends_.push_back(keys_.size());
}

std::vector<uint32_t> NameSorter::lastToFirst() const {
    std::vector<std::string_view> keys;
    keys.reserve(ends_.size());
    std::size_t start = 0;
    for (const std::size_t end : ends_) {
        keys.emplace_back(keys_.data() + start, end - start);
        start = end;
    }
    std::size_t common = keys.empty() ? 0 : keys.front().size();
    for (const std::string_view key : keys)
        common = commonLength(keys.front().substr(0, common), key);

    std::vector<Entry> entries;
    entries.reserve(keys.size());
    for (const std::string_view key : keys)
        entries.emplace_back(key.substr(common), static_cast<uint32_t>(entries.size()));
    std::stable_sort(entries.begin(), entries.end(),
                     [](const Entry &one, const Entry &other) { return one.isAfter(other); });
    std::vector<uint32_t> indexes;
    indexes.reserve(entries.size());
    for (const Entry &entry : entries)
        indexes.push_back(entry.index);
    return indexes;
}

} // namespace MWCore
