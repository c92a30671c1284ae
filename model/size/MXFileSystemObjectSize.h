// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "MXFSOSizeRecord.h"

#include <MWCore/mwcore_export.h>

#include <cstdint>
#include <optional>

#include <QExplicitlySharedDataPointer>
#include <QSharedData>
#include <QString>

namespace MWCore {

/// The size of an item, and the texts for it in an information panel. Never changes.
/// Reference-counted; any thread.
class MWCORE_EXPORT MXFileSystemObjectSize : public QSharedData {
public:
    using Ptr = QExplicitlySharedDataPointer<MXFileSystemObjectSize>;

    /// Without a record, every size is 0.
    [[nodiscard]] static Ptr
    initWithLocalFileSize(const std::optional<MXFSOSizeRecord> &record = std::nullopt);

    MXFileSystemObjectSize(const MXFileSystemObjectSize &) = delete;
    MXFileSystemObjectSize &operator=(const MXFileSystemObjectSize &) = delete;
    ~MXFileSystemObjectSize() = default;

    [[nodiscard]] const MXFSOSizeRecord &record() const { return myFSOSize_; }

    // in bytes
    [[nodiscard]] uint64_t dataForkSize() const { return myFSOSize_.dataForkSize; }
    [[nodiscard]] uint64_t physicalDataForkSize() const { return myFSOSize_.physicalDataForkSize; }
    [[nodiscard]] uint64_t resourceForkSize() const { return myFSOSize_.resourceForkSize; }
    [[nodiscard]] uint64_t physicalResourceForkSize() const {
        return myFSOSize_.physicalResourceForkSize;
    }
    [[nodiscard]] uint64_t totalSize() const { return myFSOSize_.totalSize; }
    [[nodiscard]] uint64_t physicalTotalSize() const { return myFSOSize_.physicalTotalSize; }

    [[nodiscard]] uint64_t containedItemCount() const { return myFSOSize_.containedItemCount; }

    /// A size formatted by format_size(): 0 data fork, 1 data fork allocated, 2 resource fork,
    /// 3 resource fork allocated, 4 total, 5 total allocated. "Unknown Key" for any other key.
    [[nodiscard]] QString formattedStringForKey(int32_t key) const;

    // The allocated and the exact size: "4KB on disk. ( 1,234 bytes )".
    [[nodiscard]] QString dataGetInfoString() const;
    [[nodiscard]] QString resourceGetInfoString() const;
    [[nodiscard]] QString totalSizeGetInfoString() const;

    /// "1,234 Files. 56 Folders. ( 7 hidden )" or "No items".
    [[nodiscard]] QString containsGetInfo() const;

    // For volumes: "232.845GB".
    [[nodiscard]] QString capacityGetInfoString() const;
    [[nodiscard]] QString availableGetInfoString() const;
    [[nodiscard]] QString usedGetInfoString() const;

    /// The digits in groups of three: "1,234,567". Above 2^53, those of the nearest double.
    [[nodiscard]] QString _commaDelimitedSize(uint64_t size) const;

private:
    explicit MXFileSystemObjectSize(const MXFSOSizeRecord &record);

    [[nodiscard]] QString onDisk(uint64_t physical, uint64_t logical) const;
    [[nodiscard]] static QString _format_size(uint64_t size);

    const MXFSOSizeRecord myFSOSize_;
};

} // namespace MWCore
