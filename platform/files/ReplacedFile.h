// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/private/Descriptor.h"
#include "platform/files/FileStatus.h"

#include <optional>

#include <QByteArray>

#include <sys/types.h>

namespace MWCore {

/// A small file that is replaced as a whole: written to a temporary file beside it, synced and
/// renamed, so that the old or the new content stands whole whenever the power or the process goes.
/// A temporary file that a killed process left is taken over by the next one to write. Between
/// begin() and the end of this object no other process that writes through it gets its turn.
/// Belongs to one thread.
class ReplacedFile {
public:
    /// What the file gets where there is none yet.
    struct Fresh {
        mode_t mode; ///< without what the process's mask takes away
        // As far as the process may give files away; -1 leaves its own.
        uid_t owner = static_cast<uid_t>(-1);
        gid_t group = static_cast<gid_t>(-1);
    };

    /// Waits up to five seconds for other writers. Nothing on failure, with the cause in
    /// @p status: fBsyErr when they do not finish, errFSOperationNotSupported when what is there is
    /// no plain file.
    [[nodiscard]] static std::optional<ReplacedFile> begin(const QByteArray &path,
                                                           const Fresh &fresh, OSStatus *status);

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

    /// Puts @p content in the file's place. Mode, extended attributes and, as far as the process
    /// may give files away, owner of the file that goes are kept. Once.
    [[nodiscard]] OSStatus commit(const QByteArray &content);

    /// As commit(), but never in the place of another file: dupFNErr. On a file system that cannot
    /// promise it (FUSE and the network), one that came after begin() is replaced.
    [[nodiscard]] OSStatus commitNew(const QByteArray &content);

    /// Removes the file; none is success. Once.
    [[nodiscard]] OSStatus commitRemoval();

private:
    ReplacedFile() = default;

    [[nodiscard]] OSStatus openFolder(const QByteArray &path);
    [[nodiscard]] OSStatus openOld();
    [[nodiscard]] OSStatus takeTurn();
    [[nodiscard]] int tryTurn();
    [[nodiscard]] int removeStale() const;
    [[nodiscard]] int dress() const;
    [[nodiscard]] int fill(const QByteArray &content) const;
    [[nodiscard]] int putInPlace(unsigned renameFlags);

    Fresh fresh_{};
    Descriptor folder_;
    QByteArray name_;
    QByteArray temporaryName_;
    Descriptor old_;       ///< the file that is replaced; empty when there is none
    Descriptor temporary_; ///< locked; open as long as the temporary file is ours
};

} // namespace MWCore
