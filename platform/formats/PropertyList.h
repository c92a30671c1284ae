// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/foundation/mwcore_export.h"

#include <QByteArrayView>
#include <QVariant>

namespace MWCore {

/// What the property list in @p bytes holds, XML or binary: QString, qlonglong (qulonglong above
/// its range), double, bool, QDateTime in UTC, QByteArray, QVariantList or QVariantMap. In texts a
/// byte that is not UTF-8 is carried as by stringWithFileSystemRepresentation().
///
/// Invalid for what is damaged, nested deeper than kPropertyListDepth, refers to itself or grows
/// beyond what its size justifies: time and memory are linear in the size of any input.
[[nodiscard]] MWCORE_EXPORT QVariant readPropertyList(QByteArrayView bytes);

/// How many containers may stand inside one another. Property lists in use have fewer than 20.
inline constexpr int kPropertyListDepth = 128;

} // namespace MWCore
