// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>
#include <optional>
#include <unordered_map>
#include <vector>

#include <QByteArray>
#include <QByteArrayView>

namespace MWCore {

/// The bytes of an icon family: the type 'icns' and the total length, then elements of a type, a
/// length and a payload; lengths are big-endian and include their own 8 bytes of header.
/// Belongs to one thread.
class IconContainer {
public:
    static constexpr qsizetype kHeaderLength = 8; ///< of the family and of an element

    static constexpr std::size_t kMostElements = 1 << 20;

    struct Element {
        uint32_t type;
        qsizetype offset; ///< of the payload, in bytes from the beginning of the family
        qsizetype length; ///< of the payload, in bytes
    };

    /// What is wrong with a family's bytes; elements before the damage can be read.
    enum class Damage : uint8_t {
        None,
        NoFamily,        ///< it does not begin with an icns header
        WrongLength,     ///< the declared length is not that of the bytes
        ElementTooShort, ///< an element is declared shorter than its header
        ElementTooLong,  ///< an element extends beyond the end
        Truncated,       ///< less than a header is left after the last element
        TooManyElements, ///< more than kMostElements; the others are not read
    };

    /// The elements in @p bytes, which are shared, not copied. No bytes are an empty family. Time
    /// is linear in the number of elements.
    explicit IconContainer(QByteArray bytes);

    [[nodiscard]] const std::vector<Element> &elements() const { return elements_; }
    [[nodiscard]] Damage damage() const { return damage_; }
    [[nodiscard]] const QByteArray &bytes() const { return bytes_; }

    /// The first element of @p type, or null. Takes the same time for any number of elements, but
    /// the first call makes an index of them.
    [[nodiscard]] const Element *find(uint32_t type) const;

    /// The same without an index, which is faster if only one type is looked for.
    [[nodiscard]] const Element *findOnce(uint32_t type) const;

    /// Valid as long as this object exists.
    [[nodiscard]] QByteArrayView payload(const Element &element) const;

    /// Whether there is a table of contents, and it lists the other elements as they are.
    [[nodiscard]] bool hasCorrectTable() const;

private:
    void readElements();

    QByteArray bytes_;
    std::vector<Element> elements_;
    /// The first element of each type.
    mutable std::optional<std::unordered_map<uint32_t, std::size_t>> index_;
    Damage damage_ = Damage::None;
};

/// The bytes of the elements of a family without the family's header, as a nested family stores
/// them; and the family made from them.
[[nodiscard]] QByteArray nestedFamilyBytes(const QByteArray &family);
[[nodiscard]] QByteArray familyFromNestedBytes(QByteArrayView nested);

/// The family with the element @p type set to @p payload: the first element of the type is replaced
/// where it is, a new one is added at the end. Every other byte is preserved, except the total
/// length and a table of contents that was correct before. nullopt if the family is damaged or
/// would be longer than its 32-bit length can say.
[[nodiscard]] std::optional<QByteArray> familyWithElement(const QByteArray &family, uint32_t type,
                                                          QByteArrayView payload);

/// The family without all elements of @p type; nullopt if it is damaged or has none.
[[nodiscard]] std::optional<QByteArray> familyWithoutElement(const QByteArray &family,
                                                             uint32_t type);

} // namespace MWCore
