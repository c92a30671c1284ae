// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/files/ItemLocator.h"
#include "platform/references/FSRef.h"

#include <optional>

namespace MWCore {

/// The place of the item of @p ref, at which the item can be changed. The item is found even if it
/// was moved. nullopt on failure, with the cause in @p status: fnfErr if another item is at the
/// place by now.
[[nodiscard]] std::optional<ItemLocator> locatorOf(const FSRef &ref, OSStatus *status);

/// The place of @p name in the folder of @p folder, whether or not an item has that name; otherwise
/// like locatorOf().
[[nodiscard]] std::optional<ItemLocator> locatorIn(const FSRef &folder, const QByteArray &name,
                                                   OSStatus *status);

} // namespace MWCore
