// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/AtomicFile.h"

#include "core/posix/stat_fields.h"
#include "platform/files/DescriptorPath.h"
#include "platform/files/RegularFile.h"
#include "platform/foundation/bytes.h"
#include "platform/foundation/FileSizeSignal.h"

#include <algorithm>
#include <cerrno>
#include <tuple>

#include <QRandomGenerator>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace MWCore {
namespace {

/// The usual name of the temporary file (FNV-1a, 64 bits). It is the same for each file and user,
/// so that a file that a killed process left behind is found again.
QByteArray usualTemporaryName(const QByteArray &name) {
    uint64_t hash = 0xCBF29CE484222325;
    for (const char byte : name + '/' + QByteArray::number(geteuid()))
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3;
    return ".mwcore-" + QByteArray::number(static_cast<qulonglong>(hash), 16);
}

/// A name that nobody can have taken on purpose.
QByteArray randomTemporaryName() {
    return ".mwcore-" + QByteArray::number(QRandomGenerator::system()->generate64(), 16);
}

auto versionOf(const struct stat &item) {
    return std::tuple(item.st_dev, item.st_ino, item.st_size, item.st_mtim.tv_sec,
                      item.st_mtim.tv_nsec, item.st_ctim.tv_sec, item.st_ctim.tv_nsec);
}

bool refersTo(const ItemLocator &place, const Descriptor &file) {
    struct stat named = {};
    struct stat open = {};
    return place.examine(&named) == noErr && fstat(file.number(), &open) == 0 &&
           isSameFile(named, open);
}

/// Removes this user's temporary file if no writer has locked it. Leaves it where files cannot be
/// locked, as on some network file systems, because a writer may still need it.
void removeStale(const ItemLocator &place) {
    struct stat item = {};
    OSStatus status = place.examine(&item);
    if (status != noErr || !S_ISREG(item.st_mode) || item.st_uid != geteuid())
        return;
    const Descriptor stale =
        openRegularFileAt(place.folder(), place.name(), FinalLink::Keep, &status);
    const bool isStale = stale && flock(stale.number(), LOCK_EX | LOCK_NB) == 0;
    if (isStale && refersTo(place, stale))
        unlinkat(place.folder(), place.name().constData(), 0);
}

/// Whether names can be added to the folder but not removed or replaced.
bool isAppendOnly(const ItemLocator &place) {
    struct statx folder = {};
    return statx(place.folder(), ".", AT_NO_AUTOMOUNT, STATX_TYPE, &folder) == 0 &&
           (folder.stx_attributes & STATX_ATTR_APPEND);
}

/// Whether open(2) failed because the file system has no unnamed files.
bool needsName(int error) {
    constexpr int kErrors[] = {EOPNOTSUPP, EISDIR, EINVAL, ENOENT, ENOSYS};
    return std::ranges::find(kErrors, error) != std::end(kErrors);
}

OSStatus writePiece(int descriptor, QByteArrayView piece) {
    while (!piece.isEmpty()) {
        const ssize_t count =
            write(descriptor, piece.data(), static_cast<std::size_t>(piece.size()));
        if (count < 0 && errno != EINTR)
            return statusFromErrno(errno);
        piece = piece.sliced(std::max<ssize_t>(count, 0));
    }
    return noErr;
}

OSStatus skip(int descriptor, qsizetype length) {
    return lseek(descriptor, length, SEEK_CUR) < 0 ? statusFromErrno(errno) : noErr;
}

/// Leaves holes where the content is zero, so that a sparse file does not fill the disk.
OSStatus writeAll(int descriptor, QByteArrayView content) {
    constexpr qsizetype kPiece = 1 << 16;
    const FileSizeSignalBlocked noSignal;
    for (qsizetype at = 0; at < content.size(); at += kPiece) {
        const auto piece = content.sliced(at, std::min(kPiece, content.size() - at));
        const OSStatus status =
            isZero(piece) ? skip(descriptor, piece.size()) : writePiece(descriptor, piece);
        if (status != noErr)
            return status;
    }
    return ftruncate(descriptor, content.size()) == 0 ? noErr : statusFromErrno(errno);
}

} // namespace

std::optional<AtomicFile> AtomicFile::begin(const ItemLocator &place, OSStatus *status, Keep keep) {
    AtomicFile file(place);
    file.keep_ = keep;
    removeStale(place.sibling(usualTemporaryName(place.name())));
    *status = file.openOld();
    return *status == noErr ? std::optional(std::move(file)) : std::nullopt;
}

AtomicFile::~AtomicFile() {
    if (temporary_ && !temporaryName_.isEmpty())
        unlinkat(place_.folder(), temporaryName_.constData(), 0);
}

/// Only ENOENT means that there is no file. After any other error the caller must not begin with an
/// empty file.
OSStatus AtomicFile::openOld() {
    if (fstatat(place_.folder(), place_.name().constData(), &oldStatus_, AT_SYMLINK_NOFOLLOW) != 0)
        return errno == ENOENT ? noErr : errno == ESTALE ? ioErr : statusFromErrno(errno);
    OSStatus status = noErr;
    old_ = openRegularFileAt(place_.folder(), place_.name(), FinalLink::Keep, &status);
    if (old_ && fstat(old_.number(), &oldStatus_) != 0)
        return statusFromErrno(errno);
    return status == fnfErr ? fBsyErr : status; // removed in between
}

std::optional<QByteArray> AtomicFile::content(int64_t limit, OSStatus *status) const {
    return readWhole(old_.number(), limit, status);
}

bool AtomicFile::isCurrent() const {
    struct stat now = {};
    if (fstatat(place_.folder(), place_.name().constData(), &now, AT_SYMLINK_NOFOLLOW) != 0)
        return errno == ENOENT && !old_;
    return old_ && versionOf(now) == versionOf(oldStatus_);
}

/// Calls @p make with the usual temporary name and, as long as the name is taken, with random ones.
template <typename Make> OSStatus AtomicFile::underTemporaryName(const Make &make) {
    temporaryName_ = usualTemporaryName(place_.name());
    OSStatus status = make(temporaryName_.constData());
    while (status == dupFNErr) {
        temporaryName_ = randomTemporaryName();
        status = make(temporaryName_.constData());
    }
    if (status != noErr)
        temporaryName_.clear();
    return status;
}

OSStatus AtomicFile::makeTemporary(mode_t mode) {
    temporary_ = Descriptor(openat(place_.folder(), ".", O_TMPFILE | O_WRONLY | O_CLOEXEC, mode));
    const int error = temporary_ ? 0 : errno;
    if (needsName(error))
        return underTemporaryName([this, mode](const char *name) { return makeNamed(name, mode); });
    if (temporary_)
        (void)flock(temporary_.number(), LOCK_EX | LOCK_NB); // for the name that it gets later
    return statusFromErrno(error);
}

/// dupFNErr also if another writer took the new file for a stale one, before it was locked, and
/// removes it. Only the usual name can be taken for a stale one.
OSStatus AtomicFile::makeNamed(const QByteArray &name, mode_t mode) {
    temporary_ = Descriptor(openat(place_.folder(), name.constData(),
                                   O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode));
    if (!temporary_)
        return statusFromErrno(errno);
    const bool isTaken = flock(temporary_.number(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK;
    const bool isUsual = name == usualTemporaryName(place_.name());
    return isUsual && (isTaken || !refersTo(place_.sibling(name), temporary_)) ? dupFNErr : noErr;
}

/// Copies attributes and access rights from the existing file to the temporary one; if there is
/// nothing to keep, sets @p fresh.
OSStatus AtomicFile::copyMetadata(const Access &fresh) const {
    OSStatus status = noErr;
    const auto made = accessOf(temporary_.number(), &status);
    if (!made)
        return status;
    if (!keepsOld()) {
        Access wanted = fresh;
        wanted.mode = made->mode; // minus the process's umask
        return setAccess(temporary_.number(), wanted);
    }
    const auto wanted = accessOf(old_.number(), &status);
    if (!wanted)
        return status;
    // Attributes first, because the owner of a read-only file may not write them.
    status = copyAttributes(old_.number(), temporary_.number());
    return status == noErr ? setAccess(temporary_.number(), *wanted) : status;
}

OSStatus AtomicFile::fill(const QByteArray &content, const Access &fresh) {
    constexpr mode_t kPrivate = S_IRUSR | S_IWUSR;
    OSStatus status = makeTemporary(keepsOld() ? kPrivate : fresh.mode);
    if (status == noErr)
        status = writeAll(temporary_.number(), content);
    if (status == noErr)
        status = copyMetadata(fresh);
    if (status == noErr && fsync(temporary_.number()) != 0)
        status = statusFromErrno(errno);
    return status;
}

OSStatus AtomicFile::prepare(const QByteArray &content, const Access &fresh) {
    if (old_ && isAppendOnly(place_))
        return permErr; // the temporary name could be added there but never removed
    return fill(content, fresh);
}

OSStatus AtomicFile::linkTemporary(const char *name) const {
    const QByteArray file = pathOfDescriptor(temporary_.number());
    const int result = linkat(AT_FDCWD, file.constData(), place_.folder(), name, AT_SYMLINK_FOLLOW);
    return result == 0 ? noErr : statusFromErrno(errno);
}

OSStatus AtomicFile::rename(unsigned flags) {
    const char *const name = place_.name().constData();
    if (renameat2(place_.folder(), temporaryName_.constData(), place_.folder(), name, flags) != 0)
        return statusFromErrno(errno);
    temporaryName_.clear();
    return noErr;
}

OSStatus AtomicFile::put() {
    const auto link = [this](const char *name) { return linkTemporary(name); };
    if (!old_ && temporaryName_.isEmpty())
        return link(place_.name().constData());
    OSStatus status = temporaryName_.isEmpty() ? underTemporaryName(link) : noErr;
    if (status == noErr)
        status = rename(old_ ? 0 : RENAME_NOREPLACE);
    if (status == paramErr && !old_) // EINVAL: not every file system knows the flag
        status = rename(0);
    return status;
}

OSStatus AtomicFile::remove() const {
    if (unlinkat(place_.folder(), place_.name().constData(), 0) != 0 && errno != ENOENT)
        return statusFromErrno(errno);
    return noErr;
}

void AtomicFile::syncFolder() const {
    OSStatus status = noErr;
    if (const Descriptor folder = place_.openFolder(&status))
        fsync(folder.number());
}

OSStatus AtomicFile::replace(const QByteArray &content, const Access &fresh) {
    OSStatus status = prepare(content, fresh);
    if (status == noErr)
        status = put();
    if (status == noErr)
        syncFolder();
    return status;
}

} // namespace MWCore
