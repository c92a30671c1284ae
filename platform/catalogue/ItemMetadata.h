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
/// of both forks. Reading it costs one statx(2), one list of extended attributes and one search for
/// a sidecar; its getters make no system calls. A link's metadata is its own, not its target's. A
/// plain value; any thread.
class MWCORE_EXPORT ItemMetadata {
public:
    /// Each part fails by itself.
    enum class Part : uint8_t {
        Inode = 0x1,       ///< modification date, lock, size of the data fork
        DateCreated = 0x2, ///< from the same call as Inode
        FinderInfo = 0x4,  ///< type, creator, Finder flags, label
        ResourceFork = 0x8,
    };
    Q_DECLARE_FLAGS(Parts, Part)
    static constexpr Parts kAllParts{Part::Inode, Part::DateCreated, Part::FinderInfo,
                                     Part::ResourceFork};

    /// Empty: every status is paramErr.
    ItemMetadata() { statuses_.fill(paramErr); }

    /// The metadata of the item at @p path (file-system representation). Parts that are not
    /// requested cost nothing and have the status paramErr.
    [[nodiscard]] static ItemMetadata read(const QByteArray &path, Parts parts = kAllParts);

    /// The metadata of the item that @p ref refers to, even if it was moved.
    [[nodiscard]] static ItemMetadata read(const FSRef &ref, Parts parts = kAllParts);

    /// The same for one of many items, whose metadata may have been made to be slow to read. A part
    /// that takes more time than @p timeBudget allows has the status fileBoundsErr. For the items
    /// of a listed folder use ListedMetadata, which determines @p sidecars.
    [[nodiscard]] static ItemMetadata readWithin(TimeBudget &timeBudget, const QByteArray &path,
                                                 Sidecars sidecars, Parts parts = kAllParts);

    /// noErr if the part was read, else the cause: fnfErr if the item does not exist,
    /// errFSOperationNotSupported if the file system does not store creation dates.
    [[nodiscard]] OSStatus status(Part part) const;
    [[nodiscard]] bool isKnown(Part part) const { return status(part) == noErr; }

    // nullopt if not known. MXFileSystemObject::UTCDateTimeToNSDate() converts them to QDateTime.
    [[nodiscard]] std::optional<UTCDateTime> dateModified() const;
    [[nodiscard]] std::optional<UTCDateTime> dateCreated() const;

    /// Whether the item is immutable (chattr(1)); false if not known.
    [[nodiscard]] bool isLocked() const;

    [[nodiscard]] std::optional<FinderInfo> finderInfo() const;

    // Fields of the Finder information; 0 or false if it is not known.
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

    FSCatalogInfo info_; ///< without the sizes of the resource fork
    ForkSize resourceFork_;
    std::array<OSStatus, kPartCount> statuses_; ///< indexed by bit number of the part
};
Q_DECLARE_OPERATORS_FOR_FLAGS(ItemMetadata::Parts)

} // namespace MWCore
