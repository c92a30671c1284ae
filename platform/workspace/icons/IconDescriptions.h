// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/workspace/icons/IconServices.h"

#include <cstddef>
#include <memory>

namespace MWCore {

/// Whether the icon is one of the item's kind, not of the item alone.
[[nodiscard]] bool isOfKind(const IconRef &icon);

/// A hash of what decides the look of an icon.
[[nodiscard]] std::size_t hashOf(const IconRef &icon);

/// A description with the value @p icon, whose hash is @p hash. The items of a kind share one;
/// icons with a file of their own do not. Any thread.
[[nodiscard]] std::shared_ptr<const IconRef> sharedDescription(IconRef icon, std::size_t hash);

} // namespace MWCore
