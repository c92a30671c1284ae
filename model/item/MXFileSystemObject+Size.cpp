// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// The size of an item with its contents.
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

/// The size in the record.
MXFSOSizeRecord remoteSize(const MXFileSystemObject &item) {
    MXFSOSizeRecord size;
    size.dataForkSize = static_cast<uint64_t>(int64_t(item.cstruct()->size));
    if (item.isFolder()) {
        size.containedFileCount = static_cast<uint64_t>(int64_t(item.fileCount()));
        size.containedFolderCount = static_cast<uint64_t>(int64_t(item.subFolderCount()));
    }
    return size;
}

/// Whether the item has no contents to be measured, only forks or a length.
bool isLeaf(const MXFileSystemObject &item) {
    return item.isFile() || item.isAlias() || item.isLink() ||
           (item.isApplication() && !item.isApplicationPackaged());
}

} // namespace

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
        measured.record = remoteSize(*this);
    } else if (isLeaf(*this)) {
        const auto own = getLocalFileSize();
        if (!own)
            return std::nullopt;
        measured.record = *own;
    } else {
        measured = measureContents(pathBytes(), options, myCancelFolderSizeCalc_);
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
    const bool isExamined = isLocal() && lstat(pathBytes().constData(), &item) == 0;
    if (isExamined && S_ISLNK(item.st_mode)) {
        size.dataForkSize = static_cast<uint64_t>(item.st_size);
        size.totalSize = size.dataForkSize;
        return size;
    }
    if (!isExamined && !fsRef()) { // fsRef() logs the cause
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
    if (!exists() && !fsRef()) {
        qCWarning(mwcoreLog, "getLocalFileSize : FSRef was null"); // deliberately not its own name
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
