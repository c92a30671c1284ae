// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <algorithm>
#include <cstdint>

#include <QList>

/// Inserts and moves elements of lists that users arrange. Elements are compared with ==. Indexes
/// are positions before the change.
namespace MWCore::Insert {

/// Moves @p object to position @p toIndex, or inserts it there if it is not in @p list. Removes
/// every other equal element. An index that is negative or not below the list's length means the
/// end.
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

/// The same, but with @p noRemoval no element is removed: @p object is added.
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
