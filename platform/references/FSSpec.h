// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "FSRef.h"

#include <MWCore/mwcore_export.h>

#include <cstdint>

#include <QString>

namespace MWCore {

/// The short description of an item, 70 bytes, that older interfaces exchange. It names an item for
/// people and logs but is not enough to find it.
struct __attribute__((packed)) MWCORE_EXPORT FSSpec {
    int16_t vRefNum = 0;      ///< lower 16 bits of the volume's number
    int32_t parID = 0;        ///< lower 32 bits of the folder's inode number
    unsigned char name[64]{}; ///< length, then at most 63 bytes of the name, in whole characters

    /// Describes the item at @p path. If nothing is there and @p createFileIfNecessary is true,
    /// creates an empty file first. Returns false and leaves @p fsSpec unchanged if there is no
    /// item or it cannot be described.
    [[nodiscard]] static bool getFSSpec(const QString &path, FSSpec *fsSpec,
                                        bool createFileIfNecessary);
};
static_assert(sizeof(FSSpec) == 70);

/// Describes the item. On failure @p fsSpec is unchanged.
[[nodiscard]] MWCORE_EXPORT OSStatus FSMakeSpec(const FSRef &ref, FSSpec *fsSpec);

namespace CarbonFSRefCreation {

/// Makes @p fsRef refer to the item at @p path, creating it as above. Returns false and leaves
/// @p fsRef unchanged if there is no item.
[[nodiscard]] MWCORE_EXPORT bool getFSRef(const QString &path, FSRef *fsRef,
                                          bool createFileIfNecessary);

} // namespace CarbonFSRefCreation

} // namespace MWCore
