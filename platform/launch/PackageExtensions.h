// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <QByteArray>

namespace MWCore {

/// Whether a folder of this name is shown as a single item, ignoring case. Any thread.
[[nodiscard]] bool hasPackageExtension(const QByteArray &name);

} // namespace MWCore
