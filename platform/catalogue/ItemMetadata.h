// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "FileCatalogue.h"

#include <MWCore/FSRef.h>
#include <MWCore/MetadataStore.h>
#include <MWCore/mwcore_export.h>
#include <MWCore/TimeBudget.h>

#include <array>
#include <cstdint>
#include <optional>

#include <QByteArray>
#include <QFlags>

namespace MWCore {

struct StoredMetadata;

/// A snapshot of an item's metadata: dates, lock, type, creator, Finder flags, label and the sizes
/// of both forks. It is read once, with one statx(2), one list of extended attributes and one look
/// for a sidecar, and makes no system call afterwards. A link's metadata is its own, not its
/// target's. A plain value; reading works on any thread.
class MWCORE_EXPORT ItemMetadata {
public:
    /// Each part fails by itself.
    enum class Part : uint8_t {
        Inode = 0x1,       ///< date of modification, lock, size of the data fork
        DateCreated = 0x2, ///< from the same call as Inode
        FinderInfo = 0x4,  ///< type, creator, Finder flags, label
        ResourceFork = 0x8,
    };
    Q_DECLARE_FLAGS(Parts, Part)
    static constexpr Parts kAllParts{Part::Inode, Part::DateCreated, Part::FinderInfo,
                                     Part::ResourceFork};

    /// Knows nothing: every status is paramErr.
    ItemMetadata() { statuses_.fill(paramErr); }

    /// The metadata of the item at @p path (file-system representation). Parts that are not asked
    /// for cost nothing, and have the status paramErr.
    [[nodiscard]] static ItemMetadata read(const QByteArray &path, Parts parts = kAllParts);

    /// The metadata of the item that @p ref refers to, wherever it is now.
    [[nodiscard]] static ItemMetadata read(const FSRef &ref, Parts parts = kAllParts);

    /// The same for one of many items, whose metadata somebody else may have made long on purpose.
    /// A part that takes more time than @p timeBudget grants has the status fileBoundsErr. Of a
    /// folder that was listed, ListedMetadata knows @p sidecars.
    [[nodiscard]] static ItemMetadata readWithin(TimeBudget &timeBudget, const QByteArray &path,
                                                 Sidecars sidecars, Parts parts = kAllParts);

    /// noErr for a part that is known, else why it is not: fnfErr when there is no item;
    /// errFSOperationNotSupported for a date of creation that the file system does not keep.
    [[nodiscard]] OSStatus status(Part part) const;
    [[nodiscard]] bool isKnown(Part part) const { return status(part) == noErr; }

    /// MXFileSystemObject::UTCDateTimeToNSDate() makes dates for Qt of them.
    [[nodiscard]] std::optional<UTCDateTime> dateModified() const;
    [[nodiscard]] std::optional<UTCDateTime> dateCreated() const;

    /// Whether nobody may change the item: its immutable attribute (chattr(1)). False where that is
    /// not known.
    [[nodiscard]] bool isLocked() const;

    [[nodiscard]] std::optional<FinderInfo> finderInfo() const;

    // Fields of the Finder information; 0 and false where it is not known.
    [[nodiscard]] uint32_t type() const { return info_.finderInfo.type; }
    [[nodiscard]] uint32_t creator() const { return info_.finderInfo.creator; }
    [[nodiscard]] int labelNumber() const { return info_.finderInfo.labelNumber(); }
    [[nodiscard]] bool isInvisible() const { return info_.finderInfo.flags & kIsInvisible; }

    [[nodiscard]] std::optional<ForkSize> dataForkSize() const;
    [[nodiscard]] std::optional<ForkSize> resourceForkSize() const;

private:
    static constexpr std::size_t kPartCount = 4;

    void setStatus(Parts parts, OSStatus status);
    [[nodiscard]] bool examine(const QByteArray &path, Parts parts);
    void take(const StoredMetadata &stored, Parts parts);

    FSCatalogInfo info_; ///< without sizes of the resource fork
    ForkSize resourceFork_;
    std::array<OSStatus, kPartCount> statuses_; ///< by the place of the part's bit
};
Q_DECLARE_OPERATORS_FOR_FLAGS(ItemMetadata::Parts)

} // namespace MWCore
