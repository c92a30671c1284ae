// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/posix/Descriptor.h"
#include "platform/files/AccessRights.h"
#include "platform/files/ItemLocator.h"
#include "platform/foundation/OSStatus.h"

#include <cstdint>
#include <optional>
#include <utility>

#include <QByteArray>

#include <sys/stat.h>

namespace MWCore {

/// Replaces a small file atomically. The new content is written to a temporary file that nobody
/// else can open, synced, and only then given the file's name, so that a power failure or crash
/// leaves either the old or the new content. Concurrent writers lose no changes if each of them,
/// holding a FolderLock, calls put() only if isCurrent(), and otherwise begins again. Belongs to
/// one thread.
class AtomicFile {
public:
    /// What the new file keeps of the existing one.
    enum class Keep : uint8_t { AccessAndAttributes, Nothing };

    /// Opens the file at @p place, if there is one. nullopt on failure, with the cause in
    /// @p status: errFSOperationNotSupported if the item there is not a regular file.
    [[nodiscard]] static std::optional<AtomicFile> begin(const ItemLocator &place, OSStatus *status,
                                                         Keep keep = Keep::AccessAndAttributes);

    AtomicFile(AtomicFile &&) noexcept = default;
    AtomicFile(const AtomicFile &) = delete;
    AtomicFile &operator=(const AtomicFile &) = delete;
    AtomicFile &operator=(AtomicFile &&) = delete;
    ~AtomicFile();

    /// Whether begin() found a file.
    [[nodiscard]] bool isThere() const { return bool(old_); }

    /// The content of that file. nullopt on failure, with the cause in @p status: fileBoundsErr if
    /// it is longer than @p limit bytes.
    [[nodiscard]] std::optional<QByteArray> content(int64_t limit, OSStatus *status) const;

    /// Whether the name still refers to the file that begin() found, unchanged, or to no file if it
    /// found none.
    [[nodiscard]] bool isCurrent() const;

    /// Writes @p content to the temporary file, for the next put(), with the access rights and
    /// extended attributes of the existing file. Without one, or if nothing of it is to be kept,
    /// the access rights are @p fresh, with the process's umask applied to the mode. permErr if
    /// owner or group cannot be kept and somebody would lose access. The existing file does not
    /// change.
    [[nodiscard]] OSStatus prepare(const QByteArray &content, const Access &fresh);

    /// Gives the prepared content the file's name. If begin() found no file and one exists by now,
    /// returns dupFNErr; some network file systems cannot do that and replace it.
    [[nodiscard]] OSStatus put();

    /// Removes the file; succeeds if there is none.
    [[nodiscard]] OSStatus remove() const;

    /// Syncs the folder, so that put() or remove() survives a power failure.
    void syncFolder() const;

    /// prepare(), put() and syncFolder(), for a new file or one that nobody else writes.
    [[nodiscard]] OSStatus replace(const QByteArray &content, const Access &fresh);

private:
    explicit AtomicFile(ItemLocator place) : place_(std::move(place)) {}

    [[nodiscard]] OSStatus openOld();
    [[nodiscard]] bool keepsOld() const { return old_ && keep_ == Keep::AccessAndAttributes; }
    [[nodiscard]] OSStatus makeTemporary(mode_t mode);
    [[nodiscard]] OSStatus makeNamed(const QByteArray &name, mode_t mode);
    template <typename Make> [[nodiscard]] OSStatus underTemporaryName(const Make &make);
    [[nodiscard]] OSStatus linkTemporary(const char *name) const;
    [[nodiscard]] OSStatus copyMetadata(const Access &fresh) const;
    [[nodiscard]] OSStatus fill(const QByteArray &content, const Access &fresh);
    [[nodiscard]] OSStatus rename(unsigned flags);

    ItemLocator place_;
    Keep keep_ = Keep::AccessAndAttributes;
    Descriptor old_; ///< the existing file; empty if there is none
    struct stat oldStatus_ {};
    Descriptor temporary_;     ///< locked
    QByteArray temporaryName_; ///< empty while it has no name
};

} // namespace MWCore
