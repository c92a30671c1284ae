// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/foundation/Log.h"

namespace MWCore {

Q_LOGGING_CATEGORY(mwcoreLog, "mwcore", QtWarningMsg)

} // namespace MWCore
