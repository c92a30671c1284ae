// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstddef>
#include <vector>

#include <QByteArray>
#include <QByteArrayView>

namespace MWCore {

/// The names of the items that may have a custom icon in the GVfs metadata. It is found without
/// understanding the format, from the ends of all texts in the files: it may include other names,
/// but leaves none out. Any thread may read it.
class CustomIconNames {
public:
    /// Those in the files of @p folder; none if there is no such folder. Every name, if there is a
    /// file of an unknown version, or one that is too large or cannot be read.
    explicit CustomIconNames(const QByteArray &folder);

    /// False if no item of that name has a custom icon; an empty name is that of "/". Costs
    /// nanoseconds.
    [[nodiscard]] bool mayInclude(QByteArrayView name) const;

    /// Whether the files are as they were.
    [[nodiscard]] bool isCurrent() const;

private:
    void addAll(const QByteArray &bytes);
    void add(QByteArrayView name);
    [[nodiscard]] std::size_t bitOf(QByteArrayView end) const;

    QByteArray folder_;
    QByteArray state_;       ///< of the files
    std::vector<bool> ends_; ///< by the hash of a name's last bytes; their number is a power of 2
    bool includesAll_ = false;
};

} // namespace MWCore
