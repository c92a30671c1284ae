// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/metadata/FinderInfo.h"

#include <optional>
#include <span>

#include <QByteArray>

namespace MWCore {

/// How one family of programs keeps Finder information in an extended attribute.
struct Convention {
    const char *attribute;
    qsizetype longest; ///< value of the convention's form, bytes

    /// Nothing when the value is not of the convention's form.
    std::optional<FinderInfo> (*read)(const QByteArray &value);

    /// A value that was read, with other information and every other byte as it was; empty when
    /// the attribute is to go.
    QByteArray (*rewritten)(const QByteArray &value, const FinderInfo &info);
};

/// In the order in which they count. The first is the one that new information is written to.
[[nodiscard]] std::span<const Convention> conventions();

} // namespace MWCore
