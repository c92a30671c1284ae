// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/foundation/mwcore_export.h"

#include <QByteArrayView>
#include <QVariant>

namespace MWCore {

/// The value of the property list in @p bytes, XML or binary: QString, qlonglong (qulonglong above
/// its range), double, bool, QDateTime in UTC, QByteArray, QVariantList or QVariantMap. Texts are
/// made by stringWithFileSystemRepresentation(), so that invalid UTF-8 is preserved.
///
/// Invalid if the list is damaged, nested deeper than kPropertyListDepth, refers to itself, or
/// expands beyond what its size justifies. Time and memory are linear in the size of any input.
[[nodiscard]] MWCORE_EXPORT QVariant readPropertyList(QByteArrayView bytes);

/// How deep containers may be nested. Property lists in use need fewer than 20 levels.
inline constexpr int kPropertyListDepth = 128;

} // namespace MWCore
