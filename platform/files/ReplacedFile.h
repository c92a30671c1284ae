// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/posix/Descriptor.h"
#include "platform/files/CopiedAccess.h"
#include "platform/files/ItemPlace.h"
#include "platform/foundation/OSStatus.h"

#include <optional>
#include <utility>

#include <QByteArray>

#include <sys/stat.h>

namespace MWCore {

/// A small file that is replaced as a whole: its new content is written to a file that nobody else
/// can open, synced, and only then given the name, so that the old or the new content stands whole
/// whenever the power or the process goes. Several writers lose nothing if each, in its FolderTurn,
/// puts its content in place only while isCurrent(), and begins anew otherwise. Belongs to one
/// thread.
class ReplacedFile {
public:
    /// Opens the file at @p place, if there is one. Nothing on failure, with the cause in
    /// @p status: errFSOperationNotSupported when what is there is no plain file.
    [[nodiscard]] static std::optional<ReplacedFile> begin(const ItemPlace &place,
                                                           OSStatus *status);

    ReplacedFile(ReplacedFile &&) noexcept = default;
    ReplacedFile(const ReplacedFile &) = delete;
    ReplacedFile &operator=(const ReplacedFile &) = delete;
    ReplacedFile &operator=(ReplacedFile &&) = delete;
    ~ReplacedFile();

    /// Whether there is a file that would be replaced.
    [[nodiscard]] bool isThere() const { return bool(old_); }

    /// What is in it. Nothing on failure, with the cause in @p status: fileBoundsErr for more than
    /// @p limit bytes.
    [[nodiscard]] std::optional<QByteArray> content(int64_t limit, OSStatus *status) const;

    /// Whether the name still leads to the file that begin() found, unchanged, or still to none.
    [[nodiscard]] bool isCurrent() const;

    /// Writes @p content beside the file, for the next put(), with mode, extended attributes, owner
    /// and group of the file that is there; @p fresh says these where there is none, and its mode
    /// is cut by the process's mask. permErr when owner or group cannot be kept and somebody would
    /// lose access by that. The file stays as it is.
    [[nodiscard]] OSStatus prepare(const QByteArray &content, const Access &fresh);

    /// Gives the prepared content the name. Where there was no file, never in the place of one that
    /// came since: dupFNErr; file systems that cannot promise that (some on the network) replace
    /// it.
    [[nodiscard]] OSStatus put();

    /// Removes the file; none is success.
    [[nodiscard]] OSStatus remove() const;

    /// Makes what put() or remove() did survive a loss of power.
    void syncFolder() const;

    /// prepare(), put() and syncFolder(): for a file that nobody else writes, or a new one.
    [[nodiscard]] OSStatus replace(const QByteArray &content, const Access &fresh);

private:
    explicit ReplacedFile(ItemPlace place) : place_(std::move(place)) {}

    [[nodiscard]] OSStatus openOld();
    [[nodiscard]] int makeTemporary(mode_t mode);
    [[nodiscard]] int makeNamed(const QByteArray &name, mode_t mode);
    template <typename Make> [[nodiscard]] int underTemporaryName(const Make &make);
    [[nodiscard]] int linkTemporary(const char *name) const;
    [[nodiscard]] int dress(const Access &fresh) const;
    [[nodiscard]] int fill(const QByteArray &content, const Access &fresh);
    [[nodiscard]] int rename(unsigned flags);

    ItemPlace place_;
    Descriptor old_; ///< the file that is replaced; empty when there is none
    struct stat oldStatus_ {};
    Descriptor temporary_;     ///< locked
    QByteArray temporaryName_; ///< empty while it has none
};

} // namespace MWCore
