// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/files/AtomicFile.h"
#include "platform/files/FolderLock.h"
#include "platform/files/ItemLocator.h"
#include "platform/formats/AppleDouble.h"
#include "platform/metadata/FinderInfo.h"

#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include <QByteArray>

/// Changes to an item's metadata, in its extended attributes and its sidecar, in which concurrent
/// writers do not lose each other's changes. Any thread.
namespace MWCore {

/// One attempt at a change: the values that it is based on, and those to be written.
class MetadataChange {
public:
    explicit MetadataChange(ItemLocator item) : item_(std::move(item)) {}

    /// For system calls that take a path; valid while this object exists.
    [[nodiscard]] QByteArray path() const { return item_.path(); }
    [[nodiscard]] const ItemLocator &item() const { return item_; }

    /// Plans to change an extended attribute from @p before, the value that was read, to @p after.
    /// nullopt means that the attribute does not exist.
    void set(const char *attribute, std::optional<QByteArray> before,
             std::optional<QByteArray> after);

    /// The sidecar, to be modified; a new one if there is none. Null on failure, with the cause in
    /// @p status, which includes a file that must not be overwritten.
    [[nodiscard]] AppleDouble *sidecar(OSStatus *status);

    /// Plans to create the item, an empty file, together with its metadata. The item must not exist
    /// yet.
    void makeItem() { makesItem_ = true; }

    /// Writes everything or, as far as the system allows, nothing, and checks that it was not
    /// overwritten. Takes @p turn if it is not held yet. nullopt if another writer changed the
    /// values that the plan is based on or the ones written.
    [[nodiscard]] std::optional<OSStatus> commit(std::optional<FolderLock> &turn);

    /// Makes the change survive a power failure. To be called after the turn.
    void sync() const;

private:
    struct Attribute {
        const char *name;
        std::optional<QByteArray> before;
        std::optional<QByteArray> after;
    };

    [[nodiscard]] OSStatus prepareSidecar();
    [[nodiscard]] bool isCurrent() const;
    [[nodiscard]] OSStatus setAttributes();
    void restoreAttributes(std::size_t count);
    [[nodiscard]] OSStatus putSidecar();
    [[nodiscard]] OSStatus putItem() const;
    [[nodiscard]] bool hasNewValues() const;

    ItemLocator item_;
    std::vector<Attribute> attributes_;
    std::optional<AtomicFile> file_;
    QByteArray oldSidecar_; ///< as read
    std::optional<AppleDouble> sidecar_;
    bool makesItem_ = false;
};

/// noErr for a regular file or a folder; errFSOperationNotSupported for anything else, which can
/// have no attributes or sidecar of its own.
[[nodiscard]] OSStatus statusOfKind(const ItemLocator &item);

/// Plans a change. nullopt if another writer made the values read inconsistent.
using MetadataPlan = std::function<std::optional<OSStatus>(MetadataChange &)>;

/// Plans and writes a change, and begins again whenever another writer interferes. fBsyErr after
/// ten seconds of that.
[[nodiscard]] OSStatus changeMetadata(const ItemLocator &item, const MetadataPlan &plan);

/// Creates an empty file and its sidecar, filled by @p fill; both or neither. A sidecar without an
/// item may be left over from a killed process; it is reused if @p isLeftOver returns true.
/// dupFNErr if the item exists or has a sidecar that is not left over.
[[nodiscard]] OSStatus
makeItemWithSidecar(const ItemLocator &place,
                    const std::function<bool(const AppleDouble &)> &isLeftOver,
                    const std::function<void(AppleDouble &)> &fill);

// Like the operations on a path in MetadataStore.h.
[[nodiscard]] OSStatus changeFinderInfo(const ItemLocator &item,
                                        const std::function<void(FinderInfo &)> &change);

/// Returns the new content of a resource fork; no bytes mean that there is no fork. To refuse, sets
/// @p status to the cause.
using ForkChange = std::function<QByteArray(QByteArrayView fork, OSStatus *status)>;
[[nodiscard]] OSStatus changeResourceFork(const ItemLocator &item, const ForkChange &change);

} // namespace MWCore
