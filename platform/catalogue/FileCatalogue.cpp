// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/catalogue/FileCatalogue.h"

#include "core/posix/stat_fields.h"
#include "platform/files/FolderLock.h"
#include "platform/files/RegularFile.h"
#include "platform/metadata/MetadataChange.h"
#include "platform/metadata/MetadataStore.h"
#include "platform/references/AliasResolution.h"
#include "platform/references/ReferenceLocator.h"

#include <cerrno>
#include <ctime>
#include <limits>

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>

namespace MWCore {
namespace {

constexpr int64_t kSecondsFrom1904To1970 = 2'082'844'800;
constexpr int64_t kFractions = 65536;
constexpr int64_t kNanoseconds = 1'000'000'000;

constexpr FSCatalogInfoBitmap kFromStatx = kFSCatInfoNodeFlags | kFSCatInfoVolume |
                                           kFSCatInfoCreateDate | kFSCatInfoContentMod |
                                           kFSCatInfoDataSizes;
constexpr FSCatalogInfoBitmap kSettable =
    kFSCatInfoNodeFlags | kFSCatInfoContentMod | kFSCatInfoFinderInfo;

UTCDateTime dateFrom(const statx_timestamp &time) {
    return utcDateTimeFrom({time.tv_sec, static_cast<long>(time.tv_nsec)});
}

/// Fills all fields that one statx(2) provides.
OSStatus examine(const QByteArray &path, FSCatalogInfoBitmap whichInfo, FSCatalogInfo *info) {
    struct statx item = {};
    constexpr unsigned kMask =
        STATX_TYPE | STATX_SIZE | STATX_BLOCKS | STATX_MTIME | STATX_BTIME | STATX_MNT_ID;
    if (statx(AT_FDCWD, path.constData(), AT_SYMLINK_NOFOLLOW, kMask, &item) != 0)
        return statusFromErrno(errno);
    info->nodeFlags = FSNodeFlags()
                          .setFlag(kFSNodeLockedMask, item.stx_attributes & STATX_ATTR_IMMUTABLE)
                          .setFlag(kFSNodeIsDirectoryMask, S_ISDIR(item.stx_mode));
    info->volume = static_cast<FSVolumeRefNum>(item.stx_mnt_id);
    info->contentModDate = dateFrom(item.stx_mtime);
    info->dataLogicalSize = item.stx_size;
    info->dataPhysicalSize = lengthOfBlocks(item.stx_blocks);
    const bool hasBirth = item.stx_mask & STATX_BTIME;
    info->createDate = hasBirth ? dateFrom(item.stx_btime) : 0;
    return hasBirth || !(whichInfo & kFSCatInfoCreateDate) ? noErr : errFSOperationNotSupported;
}

OSStatus readForkSizes(const QByteArray &path, FSCatalogInfo *info) {
    ForkSize fork;
    const OSStatus status = resourceForkSize(path, &fork);
    info->rsrcLogicalSize = static_cast<uint64_t>(fork.logical);
    info->rsrcPhysicalSize = static_cast<uint64_t>(fork.physical);
    return status;
}

enum class Lock { Off, On };

/// Sets or clears the immutable attribute of an open item.
OSStatus setImmutable(int item, Lock lock, int *flags) {
    if (ioctl(item, FS_IOC_GETFLAGS, flags) != 0)
        return statusFromErrno(errno);
    const int wanted = lock == Lock::On ? *flags | FS_IMMUTABLE_FL : *flags & ~FS_IMMUTABLE_FL;
    if (wanted == *flags)
        return noErr;
    *flags = wanted;
    return ioctl(item, FS_IOC_SETFLAGS, flags) == 0 ? noErr : statusFromErrno(errno);
}

OSStatus setLock(const ItemLocator &place, Lock lock) {
    const FolderLock turn(place); // all flags are read and written together
    OSStatus status = turn.status();
    if (status != noErr)
        return status;
    const Descriptor item = openFileOrFolderAt(place.folder(), place.name(), &status);
    int flags = 0;
    return item ? setImmutable(item.number(), lock, &flags) : status;
}

OSStatus setModificationDate(const ItemLocator &place, UTCDateTime date) {
    const timespec times[] = {{0, UTIME_OMIT}, timeFrom(date)};
    return utimensat(place.folder(), place.name().constData(), times, AT_SYMLINK_NOFOLLOW) == 0
               ? noErr
               : statusFromErrno(errno);
}

OSStatus setAll(const ItemLocator &place, FSCatalogInfoBitmap whichInfo,
                const FSCatalogInfo &info) {
    OSStatus status = noErr;
    const bool locks = info.nodeFlags & kFSNodeLockedMask;
    // A locked item takes no other change: unlock first, lock last.
    if ((whichInfo & kFSCatInfoNodeFlags) && !locks)
        status = setLock(place, Lock::Off);
    if (status == noErr && (whichInfo & kFSCatInfoFinderInfo))
        status = changeFinderInfo(place, [&info](FinderInfo &now) { now = info.finderInfo; });
    if (status == noErr && (whichInfo & kFSCatInfoContentMod))
        status = setModificationDate(place, info.contentModDate);
    if (status == noErr && (whichInfo & kFSCatInfoNodeFlags) && locks)
        status = setLock(place, Lock::On);
    return status;
}

} // namespace

UTCDateTime utcDateTimeFrom(const timespec &time) {
    constexpr auto kLast = std::numeric_limits<UTCDateTime>::max();
    if (time.tv_sec < -kSecondsFrom1904To1970)
        return 0;
    const auto seconds = static_cast<UTCDateTime>(time.tv_sec) + kSecondsFrom1904To1970;
    if (seconds > kLast / kFractions)
        return kLast;
    return seconds * kFractions +
           static_cast<UTCDateTime>(time.tv_nsec * kFractions / kNanoseconds);
}

timespec timeFrom(UTCDateTime date) {
    timespec time = {};
    time.tv_sec = static_cast<time_t>(date / kFractions) - kSecondsFrom1904To1970;
    // Rounded up, so that converting back gives the same date.
    time.tv_nsec = static_cast<long>(
        (static_cast<int64_t>(date % kFractions) * kNanoseconds + kFractions - 1) / kFractions);
    return time;
}

OSStatus FSGetCatalogInfo(const FSRef &ref, FSCatalogInfoBitmap whichInfo, FSCatalogInfo *info) {
    QByteArray path;
    const OSStatus status = currentPath(ref, &path);
    return status == noErr ? FSGetCatalogInfoForPath(path, whichInfo, info) : status;
}

OSStatus FSGetCatalogInfoForPath(const QByteArray &path, FSCatalogInfoBitmap whichInfo,
                                 FSCatalogInfo *info) {
    OSStatus status = noErr;
    if (whichInfo & kFSCatInfoFinderInfo)
        status = readFinderInfo(path, &info->finderInfo);
    if (status == noErr && (whichInfo & kFSCatInfoRsrcSizes))
        status = readForkSizes(path, info);
    if (status == noErr && (whichInfo & kFromStatx))
        status = examine(path, whichInfo, info);
    return status;
}

OSStatus FSSetCatalogInfo(const FSRef &ref, FSCatalogInfoBitmap whichInfo,
                          const FSCatalogInfo &info) {
    if (whichInfo & ~kSettable)
        return errFSOperationNotSupported;
    OSStatus status = noErr;
    const auto place = locatorOf(ref, &status);
    return place ? setAll(*place, whichInfo, info) : status;
}

OSStatus FSChangeFinderInfo(const FSRef &ref, const std::function<void(FinderInfo &)> &change) {
    OSStatus status = noErr;
    const auto place = locatorOf(ref, &status);
    return place ? changeFinderInfo(*place, change) : status;
}

} // namespace MWCore
