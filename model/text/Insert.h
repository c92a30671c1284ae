// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <algorithm>
#include <cstdint>

#include <QList>

/// Lists whose order a user chose: one element is inserted at, or moved to, a position. Entries are
/// compared with ==. Indexes are positions before the change.
namespace MWCore::Insert {

/// Moves @p object to position @p toIndex; one that was not in @p list is inserted there. Every
/// other entry equal to it goes. A negative index, or one from the list's length on, means the end.
template <typename Element>
void moveItem(QList<Element> &list, const Element &object, int32_t toIndex) {
    const Element kept = object; // it may be an element of the list
    const auto isInside = toIndex >= 0 && toIndex < list.size();
    const qsizetype first = list.indexOf(kept);
    qsizetype target = isInside ? toIndex : list.size();
    list.removeAll(kept);
    if (isInside && first >= 0 && first < target)
        --target;
    list.insert(std::min(target, list.size()), kept);
}

/// With @p noRemoval nothing goes: the object becomes an additional entry. Else as above.
template <typename Element>
void moveItem(QList<Element> &list, const Element &object, int32_t toIndex, bool noRemoval) {
    if (!noRemoval) {
        moveItem(list, object, toIndex);
        return;
    }
    const auto isInside = toIndex >= 0 && toIndex < list.size();
    list.insert(isInside ? toIndex : list.size(), Element(object));
}

/// Appends @p object and, unless @p atIndex is negative, moves it there.
template <typename Element>
void addObject(QList<Element> &list, const Element &object, int32_t atIndex) {
    const Element kept = object;
    list.append(kept);
    if (atIndex >= 0)
        moveItem(list, kept, atIndex);
}

} // namespace MWCore::Insert
