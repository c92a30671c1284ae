// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/files/FolderTurn.h"
#include "platform/files/ItemPlace.h"
#include "platform/files/ReplacedFile.h"
#include "platform/formats/AppleDouble.h"
#include "platform/metadata/FinderInfo.h"

#include <functional>
#include <optional>
#include <utility>
#include <vector>

#include <QByteArray>

/// Changes of what is kept of an item, in its extended attributes and its sidecar, so that of two
/// writers neither loses what the other wrote. Any thread.
namespace MWCore {

/// One attempt at a change: what it was worked out from, and what is to be written.
class MetadataChange {
public:
    explicit MetadataChange(ItemPlace item) : item_(std::move(item)) {}

    /// For system calls that take a path; valid while this lives.
    [[nodiscard]] QByteArray path() const { return item_.path(); }
    [[nodiscard]] const ItemPlace &item() const { return item_; }

    /// Plans to set an extended attribute whose value was read as @p before (absent for nothing) to
    /// @p after, or to remove it for nothing.
    void set(const char *attribute, std::optional<QByteArray> before,
             std::optional<QByteArray> after);

    /// The sidecar, to be changed; a fresh one where there is none. Null, with the cause in
    /// @p status, when what is there must not be overwritten.
    [[nodiscard]] AppleDouble *sidecar(OSStatus *status);

    /// Plans to make the item, an empty file, which must not be there yet, together with what is
    /// kept of it.
    void makeItem() { makesItem_ = true; }

    /// Writes everything or, as far as the system lets it, nothing, and sees whether it stands; in
    /// @p turn, which is taken if it is not held yet. Nothing when somebody else changed what the
    /// plan was made from.
    [[nodiscard]] std::optional<OSStatus> commit(std::optional<FolderTurn> &turn);

    /// Makes what was written survive a loss of power; when the turn is over.
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
    [[nodiscard]] bool stands() const;

    ItemPlace item_;
    std::vector<Attribute> attributes_;
    std::optional<ReplacedFile> file_;
    QByteArray oldSidecar_; ///< as read
    std::optional<AppleDouble> sidecar_;
    bool makesItem_ = false;
};

/// noErr for a plain file or a folder, which alone can have attributes and sidecars of their own;
/// errFSOperationNotSupported for anything else.
[[nodiscard]] OSStatus statusOfKind(const ItemPlace &item);

/// Plans a change. Nothing when what was read does not fit together.
using MetadataPlan = std::function<std::optional<OSStatus>(MetadataChange &)>;

/// Makes the change that @p plan plans; from the start again whenever another writer came between.
/// fBsyErr after ten seconds of that.
[[nodiscard]] OSStatus changeMetadata(const ItemPlace &item, const MetadataPlan &plan);

/// Makes an empty file and its sidecar, as @p fill fills it, both or neither. A sidecar without an
/// item may be what a killed process left; it is taken over if @p isLeftOver says so. dupFNErr when
/// something is there, or the sidecar of something else.
[[nodiscard]] OSStatus
makeItemWithSidecar(const ItemPlace &place,
                    const std::function<bool(const AppleDouble &)> &isLeftOver,
                    const std::function<void(AppleDouble &)> &fill);

// As the operations on a path in MetadataStore.h.
[[nodiscard]] OSStatus changeFinderInfo(const ItemPlace &item,
                                        const std::function<void(FinderInfo &)> &change);

/// What becomes of a resource fork; no bytes mean that there is none. It may refuse, with the cause
/// in @p status.
using ForkChange = std::function<QByteArray(QByteArrayView fork, OSStatus *status)>;
[[nodiscard]] OSStatus changeResourceFork(const ItemPlace &item, const ForkChange &change);

} // namespace MWCore
