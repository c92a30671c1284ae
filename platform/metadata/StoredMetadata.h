// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/foundation/TimeBudget.h"
#include "platform/metadata/MetadataStore.h"

#include <QByteArray>
#include <QFlags>

/// Several parts of an item's metadata, found in one look. Any thread.
namespace MWCore {

enum class StoredPart : uint8_t { FinderInfo = 0x1, ResourceFork = 0x2 };
Q_DECLARE_FLAGS(StoredParts, StoredPart)
Q_DECLARE_OPERATORS_FOR_FLAGS(StoredParts)

/// What is kept of an item in extended attributes and its sidecar. A part that was not asked for,
/// or cannot be read, is empty.
struct StoredMetadata {
    FinderInfo finderInfo;
    OSStatus finderInfoStatus = noErr;
    ForkSize resourceFork;
    OSStatus resourceForkStatus = noErr;
};

[[nodiscard]] StoredMetadata readStoredMetadata(const QByteArray &path, StoredParts parts,
                                                Sidecars sidecars);

/// The same for listings, whose items somebody else may have given long metadata on purpose: what
/// takes more than two system calls is read only if @p timeBudget grants it. Otherwise the status
/// of the part is fileBoundsErr, and the Finder information is that of the plain extended attribute
/// alone.
[[nodiscard]] StoredMetadata readStoredMetadataWithin(TimeBudget &timeBudget,
                                                      const QByteArray &path, StoredParts parts,
                                                      Sidecars sidecars);

} // namespace MWCore
