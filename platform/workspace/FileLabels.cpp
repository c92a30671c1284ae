// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/FileLabels.h"

namespace MWCore {

QStringList fileLabels() {
    return {"None", "Gray", "Green", "Purple", "Blue", "Yellow", "Red", "Orange"};
}

} // namespace MWCore
