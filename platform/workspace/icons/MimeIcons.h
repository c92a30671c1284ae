// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/workspace/icons/IconServices.h"

#include <QString>

namespace MWCore {

/// The icon of the files of the MIME type @p name: in themes that of the type, then those of the
/// types that it is a special case of, each followed by its generic icon. Any thread.
[[nodiscard]] IconRef mimeTypeIcon(const QString &name);

} // namespace MWCore
