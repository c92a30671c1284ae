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

/// A measurement of an item and the texts that an information panel shows of it. Reference-counted;
/// never changes, so any thread may read it.
class MWCORE_EXPORT MXFileSystemObjectSize : public QSharedData {
public:
    using Ptr = QExplicitlySharedDataPointer<MXFileSystemObjectSize>;

    /// Without a record every size is 0.
    [[nodiscard]] static Ptr
    initWithLocalFileSize(const std::optional<MXFSOSizeRecord> &record = std::nullopt);

    MXFileSystemObjectSize(const MXFileSystemObjectSize &) = delete;
    MXFileSystemObjectSize &operator=(const MXFileSystemObjectSize &) = delete;
    ~MXFileSystemObjectSize();

    [[nodiscard]] const MXFSOSizeRecord &record() const { return myFSOSize_; }

    // In bytes.
    [[nodiscard]] uint64_t dataForkSize() const { return myFSOSize_.dataForkSize; }
    [[nodiscard]] uint64_t physicalDataForkSize() const { return myFSOSize_.physicalDataForkSize; }
    [[nodiscard]] uint64_t resourceForkSize() const { return myFSOSize_.resourceForkSize; }
    [[nodiscard]] uint64_t physicalResourceForkSize() const {
        return myFSOSize_.physicalResourceForkSize;
    }
    [[nodiscard]] uint64_t totalSize() const { return myFSOSize_.totalSize; }
    [[nodiscard]] uint64_t physicalTotalSize() const { return myFSOSize_.physicalTotalSize; }

    [[nodiscard]] uint64_t containedItemCount() const { return myFSOSize_.containedItemCount; }

    /// One of the sizes as format_size() has it: 0 data, 1 data allocated, 2 resources, 3 resources
    /// allocated, 4 total, 5 total allocated. "Unknown Key" for any other key.
    [[nodiscard]] QString formattedStringForKey(int32_t key) const;

    /// What is allocated, and the exact size: "4KB on disk. ( 1,234 bytes )".
    [[nodiscard]] QString dataGetInfoString() const;
    [[nodiscard]] QString resourceGetInfoString() const;
    [[nodiscard]] QString totalSizeGetInfoString() const;

    /// "1,234 Files. 56 Folders. ( 7 hidden )" or "No items".
    [[nodiscard]] QString containsGetInfo() const;

    // Of volumes: "232.845GB".
    [[nodiscard]] QString capacityGetInfoString() const;
    [[nodiscard]] QString availableGetInfoString() const;
    [[nodiscard]] QString usedGetInfoString() const;

    /// The digits in groups of three: "1,234,567". Above 2^53 those of the nearest number that a
    /// double holds.
    [[nodiscard]] QString _commaDelimitedSize(uint64_t size) const;

private:
    explicit MXFileSystemObjectSize(const MXFSOSizeRecord &record);

    [[nodiscard]] QString onDisk(uint64_t physical, uint64_t logical) const;
    [[nodiscard]] static QString _format_size(uint64_t size);

    const MXFSOSizeRecord myFSOSize_;
};

} // namespace MWCore
