// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/foundation/mwcore_export.h"

#include <QLoggingCategory>

namespace MWCore {

/// The logging category of this library, "mwcore". Everything is logged at warning level.
MWCORE_EXPORT const QLoggingCategory &mwcoreLog();

} // namespace MWCore
