// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "apps/mwfile/sorting.h"

#include "platform/foundation/Utf8.h"

#include <algorithm>
#include <cwctype>
#include <string>

namespace MWCore::mwfile {
namespace {

/// Sorts by a key that is made once an item.
template <typename MakeKey> void sortByKey(Items &items, MakeKey makeKey) {
    using Key = decltype(makeKey(*items.front()));
    std::vector<std::pair<Key, const mfs_fso *>> keyed;
    keyed.reserve(items.size());
    for (const mfs_fso *const item : items)
        keyed.emplace_back(makeKey(*item), item);
    std::stable_sort(keyed.begin(), keyed.end(),
                     [](const auto &one, const auto &other) { return one.first < other.first; });
    std::transform(keyed.begin(), keyed.end(), items.begin(),
                   [](const auto &entry) { return entry.second; });
}

/// Lower case, character by character; invalid bytes come after all characters.
std::u32string withoutCase(std::string_view name) {
    constexpr char32_t kBehindCharacters = 0x110000;
    std::u32string key;
    key.reserve(name.size());
    while (!name.empty()) {
        const Utf8Step step = nextStep(name);
        name.remove_prefix(step.bytes.size());
        key += step.valid ? static_cast<char32_t>(std::towlower(step.character))
                          : kBehindCharacters + step.character;
    }
    return key;
}

} // namespace

void sort(Items &items, Order order) {
    switch (order) {
    case Order::Name:
        return sortByKey(items, [](const mfs_fso &item) {
            // Names that differ in case alone come in the order of their bytes.
            return std::pair(withoutCase(item.name), std::string_view(item.name));
        });
    case Order::Date:
        return sortByKey(items, [](const mfs_fso &item) { return item.mod_time; });
    case Order::Size:
        return sortByKey(items, [](const mfs_fso &item) {
            return mfs_fso_isDir(&item) ? 0 : mfs_fso_full_size(&item);
        });
    case Order::Access:
        return sortByKey(items, [](const mfs_fso &item) { return item.permissions; });
    }
}

} // namespace MWCore::mwfile
