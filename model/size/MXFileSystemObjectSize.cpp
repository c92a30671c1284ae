// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/size/MXFileSystemObjectSize.h"

#include "core/posix/allocation.h"
#include "model/text/format_size.h"

#include <cstdio>

namespace MWCore {

MXFileSystemObjectSize::MXFileSystemObjectSize(const MXFSOSizeRecord &record)
    : myFSOSize_(record) {}

MXFileSystemObjectSize::Ptr
MXFileSystemObjectSize::initWithLocalFileSize(const std::optional<MXFSOSizeRecord> &record) {
    return Ptr(new MXFileSystemObjectSize(record.value_or(MXFSOSizeRecord())));
}

QString MXFileSystemObjectSize::formattedStringForKey(int32_t key) const {
    constexpr uint64_t MXFSOSizeRecord::*kFields[] = {
        &MXFSOSizeRecord::dataForkSize,     &MXFSOSizeRecord::physicalDataForkSize,
        &MXFSOSizeRecord::resourceForkSize, &MXFSOSizeRecord::physicalResourceForkSize,
        &MXFSOSizeRecord::totalSize,        &MXFSOSizeRecord::physicalTotalSize,
    };
    if (key < 0 || key >= int32_t(std::size(kFields)))
        return QStringLiteral("Unknown Key");
    return _format_size(record().*kFields[key]);
}

QString MXFileSystemObjectSize::dataGetInfoString() const {
    return onDisk(physicalDataForkSize(), dataForkSize());
}

QString MXFileSystemObjectSize::resourceGetInfoString() const {
    return onDisk(physicalResourceForkSize(), resourceForkSize());
}

QString MXFileSystemObjectSize::totalSizeGetInfoString() const {
    return onDisk(physicalTotalSize(), totalSize());
}

QString MXFileSystemObjectSize::onDisk(uint64_t physical, uint64_t logical) const {
    return QStringLiteral("%1 on disk. ( %2 bytes )")
        .arg(_format_size(physical), _commaDelimitedSize(logical));
}

QString MXFileSystemObjectSize::containsGetInfo() const {
    const uint64_t files = record().containedFileCount;
    const uint64_t folders = record().containedFolderCount;
    if (files == 0 && folders == 0)
        return QStringLiteral("No items");
    return QStringLiteral("%1 Files. %2 Folders. ( %3 hidden )")
        .arg(_commaDelimitedSize(files), _commaDelimitedSize(folders),
             _commaDelimitedSize(record().hiddenItemCount));
}

QString MXFileSystemObjectSize::capacityGetInfoString() const {
    return _format_size(totalSize());
}

QString MXFileSystemObjectSize::availableGetInfoString() const {
    return _format_size(record().volumeFreeBytes);
}

QString MXFileSystemObjectSize::usedGetInfoString() const {
    return _format_size(totalSize() - record().volumeFreeBytes);
}

// NOLINTNEXTLINE(readability-convert-member-functions-to-static): called on a size object
QString MXFileSystemObjectSize::_commaDelimitedSize(uint64_t size) const {
    char digits[255];
    std::snprintf(digits, sizeof digits, "%.0lf", static_cast<double>(size));
    QString text = QString::fromLatin1(digits);
    for (qsizetype at = text.size() - 3; at > 0; at -= 3)
        text.insert(at, u',');
    return text;
}

QString MXFileSystemObjectSize::_format_size(uint64_t size) {
    const Text text(format_size(size));
    return QString::fromLatin1(text.get());
}

} // namespace MWCore
