// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/foundation/TimeBudget.h"
#include "platform/metadata/MetadataStore.h"

#include <QByteArray>
#include <QFlags>

/// Reads several parts of an item's metadata at once. Any thread.
namespace MWCore {

enum class StoredPart : uint8_t { FinderInfo = 0x1, ResourceFork = 0x2 };
Q_DECLARE_FLAGS(StoredParts, StoredPart)
Q_DECLARE_OPERATORS_FOR_FLAGS(StoredParts)

/// An item's metadata in extended attributes and its sidecar. A part that was not requested or
/// cannot be read is empty.
struct StoredMetadata {
    FinderInfo finderInfo;
    OSStatus finderInfoStatus = noErr;
    ForkSize resourceFork;
    OSStatus resourceForkStatus = noErr;
};

[[nodiscard]] StoredMetadata readStoredMetadata(const QByteArray &path, StoredParts parts,
                                                Sidecars sidecars);

/// The same for listings, whose items may have metadata that was made to be slow to read. A part
/// that takes more than two system calls is read only if @p timeBudget allows it. Otherwise its
/// status is fileBoundsErr, and the Finder information is that of the plain extended attribute
/// only.
[[nodiscard]] StoredMetadata readStoredMetadataWithin(TimeBudget &timeBudget,
                                                      const QByteArray &path, StoredParts parts,
                                                      Sidecars sidecars);

} // namespace MWCore
