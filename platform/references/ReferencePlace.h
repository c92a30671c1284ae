// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/files/ItemPlace.h"
#include "platform/references/FSRef.h"

#include <optional>

namespace MWCore {

/// The place of the item of @p ref, found again if it was moved, to change the item there. Nothing
/// on failure, with the cause in @p status: fnfErr when another item is there by now.
[[nodiscard]] std::optional<ItemPlace> placeOf(const FSRef &ref, OSStatus *status);

/// The place of @p name in the folder of @p folder, whether something is there or not; otherwise
/// as above.
[[nodiscard]] std::optional<ItemPlace> placeIn(const FSRef &folder, const QByteArray &name,
                                               OSStatus *status);

} // namespace MWCore
