// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/foundation/MXException.h"

#include <type_traits>

namespace MWCore {

static_assert(std::is_nothrow_copy_constructible_v<MXException>);

MXException::MXException(const QString &name, const QString &reason)
    : name_(name), reason_(reason), what_((name + QLatin1String(": ") + reason).toUtf8()) {}

MXException::~MXException() = default;

} // namespace MWCore
