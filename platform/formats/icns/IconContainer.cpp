// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/icns/IconContainer.h"

#include "platform/formats/BigEndian.h"
#include "platform/formats/icns/IconElements.h"

#include <algorithm>
#include <limits>

namespace MWCore {
namespace {

/// An element that is to be written.
struct Piece {
    uint32_t type;
    QByteArrayView payload;
};

uint32_t storedLength(const Piece &piece) {
    return static_cast<uint32_t>(piece.payload.size() + IconContainer::kHeaderLength);
}

std::vector<Piece> piecesOf(const IconContainer &family) {
    std::vector<Piece> pieces;
    pieces.reserve(family.elements().size() + 1);
    for (const IconContainer::Element &element : family.elements())
        pieces.push_back({element.type, family.payload(element)});
    return pieces;
}

/// Type and length of every other element, as a table of contents lists them.
QByteArray tableOfContents(const std::vector<Piece> &pieces) {
    QByteArray table;
    for (const Piece &piece : pieces) {
        if (piece.type == kTableOfContentsType)
            continue;
        appendNumber(table, piece.type);
        appendNumber(table, storedLength(piece));
    }
    return table;
}

/// The family of these elements; nullopt if it is too long.
std::optional<QByteArray> familyOf(const std::vector<Piece> &pieces) {
    qsizetype length = IconContainer::kHeaderLength;
    for (const Piece &piece : pieces)
        length += IconContainer::kHeaderLength + piece.payload.size();
    if (length > std::numeric_limits<int32_t>::max())
        return std::nullopt; // some programs read lengths as signed numbers
    QByteArray family;
    family.reserve(length);
    appendNumber(family, kIconFamilyType);
    appendNumber(family, static_cast<uint32_t>(length));
    for (const Piece &piece : pieces) {
        appendNumber(family, piece.type);
        appendNumber(family, storedLength(piece));
        family.append(piece.payload);
    }
    return family;
}

/// The family of @p pieces, which @p before became. A table of contents that was correct in
/// @p before is made to be correct again.
std::optional<QByteArray> changedFamily(const std::vector<Piece> &before,
                                        std::vector<Piece> pieces) {
    if (std::ranges::find(pieces, kTableOfContentsType, &Piece::type) == pieces.end())
        return familyOf(pieces);
    const QByteArray oldTable = tableOfContents(before);
    const QByteArray newTable = tableOfContents(pieces);
    for (Piece &piece : pieces)
        if (piece.type == kTableOfContentsType && piece.payload == oldTable)
            piece.payload = newTable;
    return familyOf(pieces);
}

} // namespace

IconContainer::IconContainer(QByteArray bytes) : bytes_(std::move(bytes)) {
    if (!bytes_.isEmpty())
        readElements();
}

void IconContainer::readElements() {
    const auto declared = numberAt<uint32_t>(bytes_, sizeof(uint32_t));
    if (numberAt<uint32_t>(bytes_, 0) != kIconFamilyType || !declared) {
        damage_ = Damage::NoFamily;
        return;
    }
    const qsizetype end = std::min<qsizetype>(*declared, bytes_.size());
    if (*declared != bytes_.size())
        damage_ = Damage::WrongLength;
    for (qsizetype at = kHeaderLength; at < end;) {
        const auto type = numberAt<uint32_t>(bytes_, uint64_t(at));
        const auto length = numberAt<uint32_t>(bytes_, uint64_t(at) + sizeof *type);
        const Damage damage = end - at < kHeaderLength            ? Damage::Truncated
                              : *length < kHeaderLength           ? Damage::ElementTooShort
                              : *length > uint64_t(end - at)      ? Damage::ElementTooLong
                              : elements_.size() == kMostElements ? Damage::TooManyElements
                                                                  : Damage::None;
        if (damage != Damage::None) {
            damage_ = damage;
            return;
        }
        elements_.push_back({*type, at + kHeaderLength, *length - kHeaderLength});
        at += *length;
    }
}

const IconContainer::Element *IconContainer::find(uint32_t type) const {
    if (!index_) {
        index_.emplace();
        for (const Element &element : elements_)
            index_->try_emplace(element.type,
                                static_cast<std::size_t>(&element - elements_.data()));
    }
    const auto found = index_->find(type);
    return found == index_->end() ? nullptr : &elements_[found->second];
}

const IconContainer::Element *IconContainer::findOnce(uint32_t type) const {
    const auto found = std::ranges::find(elements_, type, &Element::type);
    return found == elements_.end() ? nullptr : &*found;
}

QByteArrayView IconContainer::payload(const Element &element) const {
    return QByteArrayView(bytes_).sliced(element.offset, element.length);
}

bool IconContainer::hasCorrectTable() const {
    const Element *const table = find(kTableOfContentsType);
    return table && payload(*table) == tableOfContents(piecesOf(*this));
}

QByteArray nestedFamilyBytes(const QByteArray &family) {
    return family.mid(IconContainer::kHeaderLength);
}

QByteArray familyFromNestedBytes(QByteArrayView nested) {
    QByteArray family;
    appendNumber(family, kIconFamilyType);
    appendNumber(family, static_cast<uint32_t>(nested.size() + IconContainer::kHeaderLength));
    return family.append(nested);
}

std::optional<QByteArray> familyWithElement(const QByteArray &family, uint32_t type,
                                            QByteArrayView payload) {
    const IconContainer old(family);
    if (old.damage() != IconContainer::Damage::None)
        return std::nullopt;
    const std::vector<Piece> before = piecesOf(old);
    std::vector<Piece> pieces = before;
    const auto there = std::ranges::find(pieces, type, &Piece::type);
    if (there == pieces.end())
        pieces.push_back({type, payload});
    else
        there->payload = payload;
    return changedFamily(before, std::move(pieces));
}

std::optional<QByteArray> familyWithoutElement(const QByteArray &family, uint32_t type) {
    const IconContainer old(family);
    if (old.damage() != IconContainer::Damage::None || !old.findOnce(type))
        return std::nullopt;
    const std::vector<Piece> before = piecesOf(old);
    std::vector<Piece> pieces = before;
    std::erase_if(pieces, [type](const Piece &piece) { return piece.type == type; });
    return changedFamily(before, std::move(pieces));
}

} // namespace MWCore
