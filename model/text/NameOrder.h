// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <QByteArrayView>

/// Compares names (file-system representation), ignoring case: by code point after simple case
/// folding (Unicode, CaseFolding.txt, statuses C and S). Invalid UTF-8 bytes compare as themselves.
namespace MWCore {

/// Below, equal to or above 0 if @p one comes before, is equal to or comes after @p other.
[[nodiscard]] int compareNames(QByteArrayView one, QByteArrayView other);

/// Sorts many names and folds each only once.
class NameSorter {
public:
    void add(QByteArrayView name);

    /// The names in descending order, each given by its index in the order of addition. Equal names
    /// keep the order of addition.
    [[nodiscard]] std::vector<uint32_t> lastToFirst() const;

private:
    std::string keys_; ///< concatenated
    std::vector<std::size_t> ends_;
};

} // namespace MWCore
