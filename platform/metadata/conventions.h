// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/metadata/FinderInfo.h"

#include <optional>
#include <span>

#include <QByteArray>

namespace MWCore {

/// How one family of programs stores Finder information in an extended attribute.
struct Convention {
    const char *attribute;
    qsizetype longest; ///< value in this format, bytes

    /// nullopt if the value is not in this format.
    std::optional<FinderInfo> (*read)(const QByteArray &value);

    /// @p value with new information and all its other bytes preserved; empty if the attribute is
    /// to be removed.
    QByteArray (*rewritten)(const QByteArray &value, const FinderInfo &info);
};

/// In order of precedence. New information is written in the first.
[[nodiscard]] std::span<const Convention> conventions();

} // namespace MWCore
