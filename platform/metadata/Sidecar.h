// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/posix/Descriptor.h"
#include "platform/formats/AppleDouble.h"
#include "platform/foundation/OSStatus.h"
#include "platform/metadata/MetadataStore.h"

#include <optional>

#include <QByteArray>
#include <QSet>

/// The AppleDouble file "._name" beside an item, for metadata that the file system cannot store
/// (RFC 1740). A file of that name in another format is ignored. Any thread.
namespace MWCore {

/// In bytes; more than any real fork needs.
constexpr int64_t kLargestSidecar = 256 << 20;

inline constexpr QByteArrayView kSidecarPrefix = "._";
[[nodiscard]] inline bool isSidecarName(QByteArrayView name) {
    return name.startsWith(kSidecarPrefix);
}

/// The names of a folder's items that have a sidecar, collected while the folder is listed. Belongs
/// to one thread.
class SidecarNames {
public:
    /// @p name is that of any entry of the folder.
    void add(QByteArrayView name) {
        if (isSidecarName(name))
            names_ += name.sliced(kSidecarPrefix.size()).toByteArray();
    }
    void clear() { names_.clear(); }

    /// Whether the item @p name may have a sidecar. @p name is not copied.
    [[nodiscard]] Sidecars of(QByteArrayView name) const {
        const bool isListed =
            !names_.isEmpty() && names_.contains(QByteArray::fromRawData(name.data(), name.size()));
        return isListed ? Sidecars::MayExist : Sidecars::Absent;
    }

private:
    QSet<QByteArray> names_; ///< of the items, not of their sidecars
};

/// The name of the sidecar of an item @p name; empty for an item that can have none: a sidecar
/// itself, ".", ".." and "/".
[[nodiscard]] QByteArray sidecarName(const QByteArray &name);

/// An item's sidecar, open.
struct OpenSidecar {
    Descriptor file;
    int64_t length;    ///< bytes
    int64_t allocated; ///< bytes that it takes on the disk
    QByteArray head;   ///< the beginning of the file

    /// Up to @p wanted bytes of the file from @p offset on. nullopt on failure, with the cause in
    /// @p status.
    [[nodiscard]] std::optional<QByteArray> read(int64_t offset, int64_t wanted,
                                                 OSStatus *status) const;
};

/// nullopt with noErr in @p status if there is no sidecar, and nullopt on failure, with the cause
/// in
/// @p status.
[[nodiscard]] std::optional<OpenSidecar> openSidecar(const QByteArray &path, OSStatus *status);

/// An entry of an item's sidecar, located but not read yet.
struct OpenSidecarEntry : OpenSidecar {
    AppleDouble::Entry entry;
};

/// Finds the entry @p id of an item's sidecar. nullopt with noErr in @p status if there is none,
/// and nullopt on failure, with the cause in @p status: mapReadErr if the sidecar is damaged.
[[nodiscard]] std::optional<OpenSidecarEntry> openSidecarEntry(const QByteArray &path,
                                                               AppleDoubleId id, OSStatus *status);

/// Like OpenSidecarEntry, with up to @p limit bytes read. fileBoundsErr if more than 256 MB would
/// have to be read.
struct SidecarEntry {
    uint32_t length;      ///< of the whole content, bytes
    int64_t allocated;    ///< bytes that the whole sidecar takes on the disk
    QByteArray beginning; ///< at most @p limit bytes
};
[[nodiscard]] std::optional<SidecarEntry> sidecarEntry(const OpenSidecar &sidecar, AppleDoubleId id,
                                                       int64_t limit, OSStatus *status);
[[nodiscard]] std::optional<SidecarEntry> sidecarEntry(const QByteArray &path, AppleDoubleId id,
                                                       int64_t limit, OSStatus *status);

} // namespace MWCore
