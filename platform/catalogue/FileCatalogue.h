// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "Volumes.h"

#include <MWCore/FinderInfo.h>
#include <MWCore/FSRef.h>

#include <cstdint>
#include <functional>

#include <QFlags>

#include <sys/types.h>

struct timespec;

namespace MWCore {

/// A point in time: 65536ths of a second since 1904-01-01 00:00:00 GMT.
using UTCDateTime = uint64_t;

/// The fields to read or set; combined with |.
enum FSCatalogInfoBit : uint32_t {
    kFSCatInfoNone = 0,
    kFSCatInfoNodeFlags = 0x2,
    kFSCatInfoVolume = 0x4,
    kFSCatInfoCreateDate = 0x20,
    kFSCatInfoContentMod = 0x40,
    kFSCatInfoFinderInfo = 0x800,
    kFSCatInfoDataSizes = 0x4000,
    kFSCatInfoRsrcSizes = 0x8000,
};
Q_DECLARE_FLAGS(FSCatalogInfoBitmap, FSCatalogInfoBit)
Q_DECLARE_OPERATORS_FOR_FLAGS(FSCatalogInfoBitmap)

/// Bits of `FSCatalogInfo::nodeFlags`.
enum FSNodeFlag : uint16_t {
    kFSNodeLockedMask = 0x1, ///< nobody may change the item: the immutable attribute (chattr(1))
    kFSNodeIsDirectoryMask = 0x10,
};
Q_DECLARE_FLAGS(FSNodeFlags, FSNodeFlag)
Q_DECLARE_OPERATORS_FOR_FLAGS(FSNodeFlags)

struct FSCatalogInfo {
    FSNodeFlags nodeFlags;
    FSVolumeRefNum volume = 0;
    UTCDateTime createDate = 0;
    UTCDateTime contentModDate = 0;
    FinderInfo finderInfo;
    // In bytes. For a folder, the size of its list of names in the file system.
    uint64_t dataLogicalSize = 0;
    uint64_t dataPhysicalSize = 0;
    uint64_t rsrcLogicalSize = 0;
    uint64_t rsrcPhysicalSize = 0;
};

/// Fills the fields of @p info that @p whichInfo asks for. A link is not followed, and the item is
/// never opened. errFSOperationNotSupported if the creation date is asked for and the file system
/// does not record it; the other fields are filled in any case. Any thread.
[[nodiscard]] MWCORE_EXPORT OSStatus FSGetCatalogInfo(const FSRef &ref,
                                                      FSCatalogInfoBitmap whichInfo,
                                                      FSCatalogInfo *info);

/// The same for the item at @p path now, with fewer system calls than a reference takes. fnfErr if
/// nothing is there.
[[nodiscard]] MWCORE_EXPORT OSStatus FSGetCatalogInfoForPath(const QByteArray &path,
                                                             FSCatalogInfoBitmap whichInfo,
                                                             FSCatalogInfo *info);

/// Sets the fields that @p whichInfo names: the locked flag (which needs the superuser's rights),
/// the modification date and the Finder information; errFSOperationNotSupported for any other. The
/// Finder information is replaced as a whole, even if others have changed it since it was read;
/// FSChangeFinderInfo() changes a part of it. foreignLinkErr if the path contains a link that
/// another user could have made. Any thread.
[[nodiscard]] MWCORE_EXPORT OSStatus FSSetCatalogInfo(const FSRef &ref,
                                                      FSCatalogInfoBitmap whichInfo,
                                                      const FSCatalogInfo &info);

/// Calls @p change, which must not throw, with an item's current Finder information and writes the
/// result. Begins again if others write it meanwhile, so that no change is lost. Any thread.
[[nodiscard]] MWCORE_EXPORT OSStatus
FSChangeFinderInfo(const FSRef &ref, const std::function<void(FinderInfo &)> &change);

/// Exact to 1/65536 s. Times before 1904 become 0; times that are too late become the latest
/// UTCDateTime.
[[nodiscard]] MWCORE_EXPORT UTCDateTime utcDateTimeFrom(const timespec &time);
[[nodiscard]] MWCORE_EXPORT timespec timeFrom(UTCDateTime date);

} // namespace MWCore
