// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/values/MXURLObject.h"

namespace MWCore {

MXURLObject::~MXURLObject() = default; // the one definition of the vtable and type information

} // namespace MWCore
