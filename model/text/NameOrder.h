// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <QByteArrayView>

/// The order of names, in file-system representation, without regard to case: by code point, each
/// in its simple case folding (Unicode, CaseFolding.txt, statuses C and S). Bytes that are no UTF-8
/// stand for themselves.
namespace MWCore {

/// Below 0, 0 or above 0, as @p one comes before, with or behind @p other.
[[nodiscard]] int compareNames(QByteArrayView one, QByteArrayView other);

/// Sorts many names; each is folded once.
class NameSorter {
public:
    void add(QByteArrayView name);

    /// The numbers of the names, in which they were added from 0 on, from the last name to the
    /// first; names that are equal in the order in which they came.
    [[nodiscard]] std::vector<uint32_t> lastToFirst() const;

private:
    std::string keys_; ///< one behind the other
    std::vector<std::size_t> ends_;
};

} // namespace MWCore
