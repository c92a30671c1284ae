// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "Volumes.h"

#include <MWCore/FinderInfo.h>
#include <MWCore/FSRef.h>

#include <cstdint>
#include <functional>

#include <sys/types.h>

struct timespec;

namespace MWCore {

/// A point in time: 65536ths of a second since 1904-01-01 00:00:00 GMT.
using UTCDateTime = uint64_t;

/// What the catalogue is asked for, or told; combined with |.
enum FSCatalogInfoBitmap : uint32_t {
    kFSCatInfoNone = 0,
    kFSCatInfoNodeFlags = 0x2,
    kFSCatInfoVolume = 0x4,
    kFSCatInfoCreateDate = 0x20,
    kFSCatInfoContentMod = 0x40,
    kFSCatInfoFinderInfo = 0x800,
    kFSCatInfoDataSizes = 0x4000,
    kFSCatInfoRsrcSizes = 0x8000,
};

/// Bits of `FSCatalogInfo::nodeFlags`.
enum FSNodeFlags : uint16_t {
    kFSNodeLockedMask = 0x1, ///< nobody may change the item: the immutable attribute (chattr(1))
    kFSNodeIsDirectoryMask = 0x10,
};

struct FSCatalogInfo {
    uint16_t nodeFlags = 0;
    FSVolumeRefNum volume = 0;
    UTCDateTime createDate = 0;
    UTCDateTime contentModDate = 0;
    FinderInfo finderInfo;
    // Bytes. Of a folder the system's own: what its list of names takes.
    uint64_t dataLogicalSize = 0;
    uint64_t dataPhysicalSize = 0;
    uint64_t rsrcLogicalSize = 0;
    uint64_t rsrcPhysicalSize = 0;
};

/// Fills the fields of @p info that @p whichInfo asks for, of a link its own. Never opens the item.
/// errFSOperationNotSupported for the date of creation where the file system does not keep it;
/// other fields are filled then. Any thread.
[[nodiscard]] MWCORE_EXPORT OSStatus FSGetCatalogInfo(const FSRef &ref, uint32_t whichInfo,
                                                      FSCatalogInfo *info);

/// The same for what is at @p path now: fewer calls than a reference takes. fnfErr when nothing is
/// there.
[[nodiscard]] MWCORE_EXPORT OSStatus FSGetCatalogInfoForPath(const QByteArray &path,
                                                             uint32_t whichInfo,
                                                             FSCatalogInfo *info);

/// Changes what @p whichInfo names: the locked flag (which takes the superuser's rights), the date
/// of modification, the Finder information; errFSOperationNotSupported for anything else. All of
/// the Finder information is set, whatever others wrote since it was read: FSChangeFinderInfo()
/// changes a part. Never through a link that another user may have made: foreignLinkErr. Any
/// thread.
[[nodiscard]] MWCORE_EXPORT OSStatus FSSetCatalogInfo(const FSRef &ref, uint32_t whichInfo,
                                                      const FSCatalogInfo &info);

/// Lets @p change, which must not throw, change an item's Finder information as it is at that
/// moment; again if others write it meanwhile, so that no change is lost. Any thread.
[[nodiscard]] MWCORE_EXPORT OSStatus
FSChangeFinderInfo(const FSRef &ref, const std::function<void(FinderInfo &)> &change);

/// Exact to 1/65536 s; times before 1904 are 0, those that are too late the last there is.
[[nodiscard]] MWCORE_EXPORT UTCDateTime utcDateTimeFrom(const timespec &time);
[[nodiscard]] MWCORE_EXPORT timespec timeFrom(UTCDateTime date);

} // namespace MWCore
