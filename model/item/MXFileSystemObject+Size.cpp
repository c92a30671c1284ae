// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// What an item takes, with all that is in it.
#include "model/item/ItemState.h"
#include "model/item/MXFileSystemObject.h"
#include "model/size/SizeWalk.h"
#include "platform/foundation/Log.h"

#include <sys/stat.h>

namespace MWCore {
namespace {

void setTotals(MXFSOSizeRecord &record) {
    record.totalSize = record.dataForkSize + record.resourceForkSize;
    record.physicalTotalSize = record.physicalDataForkSize + record.physicalResourceForkSize;
    record.containedItemCount = record.containedFileCount + record.containedFolderCount;
}

} // namespace

/// Of other than local items what the record says.
MXFSOSizeRecord MXFileSystemObject::remoteSize() const {
    MXFSOSizeRecord size;
    size.dataForkSize = static_cast<uint64_t>(int64_t(record_->size));
    if (isFolder()) {
        size.containedFileCount = static_cast<uint64_t>(int64_t(fileCount()));
        size.containedFolderCount = static_cast<uint64_t>(int64_t(subFolderCount()));
    }
    return size;
}

bool MXFileSystemObject::hasSizeOfItsOwn() const {
    return isFile() || isAlias() || isLink() || (isApplication() && !isApplicationPackaged());
}

std::optional<MXSizeMeasurement>
MXFileSystemObject::measureSize(const MXSizeOptions &options) const {
    MXSizeMeasurement measured;
    if (!record_)
        return std::nullopt;
    if (isVolume() && !options.walksVolume) {
        const auto volume = getVolumeInformation();
        if (!volume)
            return std::nullopt;
        measured.record = *volume;
        return measured;
    }
    if (!isLocal()) {
        measured.record = remoteSize();
    } else if (hasSizeOfItsOwn()) {
        const auto own = getLocalFileSize();
        if (!own)
            return std::nullopt;
        measured.record = *own;
    } else {
        measured = measureContents(representation(), options, myCancelFolderSizeCalc_);
    }
    setTotals(measured.record);
    return measured;
}

MXFileSystemObjectSize::Ptr
MXFileSystemObject::sizeObject(const MXSizeProgressCallback &progress) const {
    if (cachedSizeObject_)
        return cachedSizeObject_;
    MXSizeOptions options;
    options.progress = progress;
    const auto measured = measureSize(options);
    if (!measured)
        return {};
    auto size = MXFileSystemObjectSize::initWithLocalFileSize(measured->record);
    if (!isVolume())
        cachedSizeObject_ = size;
    return size;
}

void MXFileSystemObject::invalidateCachedSize() {
    cachedSizeObject_.reset();
}

std::optional<MXFSOSizeRecord> MXFileSystemObject::getLocalFileSize() const {
    MXFSOSizeRecord size;
    struct stat item = {};
    const bool isThere = isLocal() && lstat(representation().constData(), &item) == 0;
    if (isThere && S_ISLNK(item.st_mode)) {
        size.dataForkSize = static_cast<uint64_t>(item.st_size);
        size.totalSize = size.dataForkSize;
        return size;
    }
    if (!isThere && !fsRef()) { // which says more in the log
        qCWarning(mwcoreLog, "getLocalFileSize : FSRef was null");
        return std::nullopt;
    }
    const auto info = catalogInfo(kFSCatInfoDataSizes | kFSCatInfoRsrcSizes);
    if (!info) {
        qCWarning(mwcoreLog, "getLocalFileSize : Error Getting info");
        return std::nullopt;
    }
    size.dataForkSize = info->dataLogicalSize;
    size.physicalDataForkSize = info->dataPhysicalSize;
    size.resourceForkSize = info->rsrcLogicalSize;
    size.physicalResourceForkSize = info->rsrcPhysicalSize;
    size.totalSize = size.dataForkSize + size.resourceForkSize;
    return size;
}

std::optional<MXFSOSizeRecord> MXFileSystemObject::getVolumeInformation() const {
    if (!isThere() && !fsRef()) {
        qCWarning(mwcoreLog, "getLocalFileSize : FSRef was null"); // deliberately the same
        return std::nullopt;
    }
    const auto item = catalogInfo(kFSCatInfoVolume);
    if (!item) {
        qCWarning(mwcoreLog, "getLocalFileSize : Error Getting info");
        return std::nullopt;
    }
    FSVolumeInfo volume;
    constexpr FSVolumeInfoBitmap kWanted =
        kFSVolInfoFileCount | kFSVolInfoDirCount | kFSVolInfoSizes;
    if (FSGetVolumeInfo(item->volume, kWanted, &volume, nullptr) != noErr)
        return std::nullopt;
    MXFSOSizeRecord size;
    size.containedItemCount = volume.fileCount + volume.folderCount;
    size.containedFolderCount = volume.folderCount;
    size.containedFileCount = volume.fileCount;
    size.totalSize = volume.totalBytes;
    size.volumeFreeBytes = volume.freeBytes;
    return size;
}

OrMarker<QString> MXFileSystemObject::totalSizeFormattedAsString() const {
    const auto size = sizeObject();
    if (!size)
        return OrMarker<QString>::marker();
    QString &text = rareTexts().formattedSize;
    if (!text.isNull())
        return text;
    constexpr int32_t kTotalSize = 4;
    text = isVolume() ? size->usedGetInfoString() : size->formattedStringForKey(kTotalSize);
    return QString(); // from the next call on
}

} // namespace MWCore
