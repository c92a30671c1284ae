// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mwcore_export.h>

#include <QStringList>

namespace MWCore {

/// The names of the eight labels by label number; the first, number 0, means none. Any thread.
[[nodiscard]] MWCORE_EXPORT QStringList fileLabels();

} // namespace MWCore
