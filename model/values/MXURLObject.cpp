// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/values/MXURLObject.h"

namespace MWCore {

MXURLObject::~MXURLObject() = default; // here, so that hosts share one type with the library

} // namespace MWCore
