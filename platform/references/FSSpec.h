// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "FSRef.h"

#include <MWCore/mwcore_export.h>

#include <cstdint>

#include <QString>

namespace MWCore {

/// The short description of an item that older interfaces exchange, 70 bytes. It names an item for
/// people and logs; it is not enough to find one.
struct __attribute__((packed)) MWCORE_EXPORT FSSpec {
    int16_t vRefNum = 0;      ///< number of the volume, its lower 16 bits
    int32_t parID = 0;        ///< inode number of the folder, its lower 32 bits
    unsigned char name[64]{}; ///< length, then at most 63 bytes of the name, in whole characters

    /// Describes the item at @p path, which is made as an empty file if nothing is there and
    /// @p createFileIfNecessary says so. False, with @p fsSpec as it was, when there is none or it
    /// cannot be described.
    [[nodiscard]] static bool getFSSpec(const QString &path, FSSpec *fsSpec,
                                        bool createFileIfNecessary);
};
static_assert(sizeof(FSSpec) == 70);

/// Describes the item. On failure @p fsSpec is as it was.
[[nodiscard]] MWCORE_EXPORT OSStatus FSMakeSpec(const FSRef &ref, FSSpec *fsSpec);

namespace CarbonFSRefCreation {

/// Refers to the item at @p path, made as above. False, with @p fsRef as it was, when there is
/// none.
[[nodiscard]] MWCORE_EXPORT bool getFSRef(const QString &path, FSRef *fsRef,
                                          bool createFileIfNecessary);

} // namespace CarbonFSRefCreation

} // namespace MWCore
