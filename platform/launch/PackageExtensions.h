// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <QByteArray>

namespace MWCore {

/// Whether a folder of this name is shown as one thing; case does not count. Any thread.
[[nodiscard]] bool hasPackageExtension(const QByteArray &name);

} // namespace MWCore
