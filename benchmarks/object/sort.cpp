// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "benchmarks/object/sort.h"

#include "benchmarks/support/check.h"
#include "benchmarks/support/counts.h"
#include "benchmarks/support/turns.h"
#include "model/item/MXFileSystemObject.h"
#include "platform/foundation/FileSystemText.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <QString>

namespace {

using MWCore::MXFileSystemObject;

using Keys = std::vector<std::pair<QString, qsizetype>>;

MXFileSystemObject::Ptr objectOf(const std::filesystem::path &folder) {
    const auto object = MXFileSystemObject::newFSOForLocalPath(
        MWCore::stringWithFileSystemRepresentation(folder.c_str()));
    require(object != nullptr, "no object for " + folder.string());
    return object;
}

/// The case-folded names, in the order of the list.
Keys keysOf(const MXFileSystemObject &folder) {
    Keys keys;
    for (qsizetype index = 0; index < folder.totalItems(); ++index)
        keys.emplace_back(folder.subitemAtIndex(index)->name().toCaseFolded(), index);
    return keys;
}

void checkSameOrder(const Keys &expected, const Keys &found) {
    require(
        std::ranges::equal(expected, found, {}, &Keys::value_type::first, &Keys::value_type::first),
        "names are sorted differently");
}

} // namespace

void compareSorting(const std::filesystem::path &folder, long entries) {
    MXFileSystemObject::Ptr object = objectOf(folder);
    const Keys unsorted = keysOf(*object);
    Keys sorted;
    const std::string title = counts::withThousands(entries) + " children sorted by name";
    turns::printTable(title.c_str(),
                      {{"setSortsByAttribute",
                        [&] {
                            object->setSortsByAttribute(MWCore::MXSortAttributeName,
                                                        MWCore::MXSortOrderReversed);
                        },
                        [&] {
                            object.reset();
                            object = objectOf(folder);
                        }},
                       {"std::stable_sort of prepared keys",
                        [&] { std::ranges::stable_sort(sorted, {}, &Keys::value_type::first); },
                        [&] { sorted = unsorted; }}},
                      counts::roundsFor(entries));
    checkSameOrder(sorted, keysOf(*object));
}
