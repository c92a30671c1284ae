// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/ReplacedFile.h"

#include "platform/files/PathParts.h"
#include "platform/files/RegularFile.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <ctime>
#include <thread>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/xattr.h>

namespace MWCore {
namespace {

/// One for each name, so that what a killed process left is found again (FNV-1a, 64 bits).
QByteArray temporaryNameFor(const QByteArray &name) {
    uint64_t hash = 0xCBF29CE484222325;
    for (const char byte : name)
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001B3;
    return ".mwcore-" + QByteArray::number(static_cast<qulonglong>(hash), 16);
}

/// Whether the open file @p descriptor still has the name @p name in @p folder.
bool isNamed(int descriptor, int folder, const char *name) {
    struct stat opened = {};
    struct stat named = {};
    return fstat(descriptor, &opened) == 0 &&
           fstatat(folder, name, &named, AT_SYMLINK_NOFOLLOW) == 0 &&
           opened.st_dev == named.st_dev && opened.st_ino == named.st_ino;
}

/// Whether nobody else has the open file locked, and locks it. Where locks cannot be had, as on
/// some network file systems, it counts as free.
bool isFree(int descriptor) {
    return flock(descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

/// 0 or an `errno` value.
int writeAll(int descriptor, const QByteArray &content) {
    qsizetype written = 0;
    while (written < content.size()) {
        const ssize_t count = write(descriptor, content.constData() + written,
                                    static_cast<std::size_t>(content.size() - written));
        if (count < 0 && errno != EINTR)
            return errno;
        written += std::max<ssize_t>(count, 0);
    }
    return 0;
}

/// As far as the file system and the process's rights allow.
void copyAttributes(int from, int to) {
    char names[65536]; // what the kernel lists, and keeps of each, at most
    char value[65536];
    const ssize_t length = flistxattr(from, names, sizeof names);
    for (ssize_t at = 0; at < length;) {
        const char *const name = names + at;
        const ssize_t size = fgetxattr(from, name, value, sizeof value);
        if (size >= 0)
            fsetxattr(to, name, value, static_cast<std::size_t>(size), 0);
        at += static_cast<ssize_t>(qstrlen(name)) + 1;
    }
}

} // namespace

std::optional<ReplacedFile> ReplacedFile::begin(const QByteArray &path, const Fresh &fresh,
                                                OSStatus *status) {
    ReplacedFile file;
    file.fresh_ = fresh;
    *status = file.openFolder(path);
    if (*status == noErr)
        *status = file.takeTurn();
    if (*status == noErr)
        *status = file.openOld();
    return *status == noErr ? std::optional(std::move(file)) : std::nullopt;
}

ReplacedFile::~ReplacedFile() {
    if (temporary_)
        unlinkat(folder_.number(), temporaryName_.constData(), 0);
}

OSStatus ReplacedFile::openFolder(const QByteArray &path) {
    const PathParts parts(path);
    name_ = parts.name;
    temporaryName_ = temporaryNameFor(name_);
    folder_ = Descriptor(open(parts.parent.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return folder_ ? noErr : statusFromErrno(errno);
}

/// One descriptor for all that is asked of it, so that no other file can come between.
OSStatus ReplacedFile::openOld() {
    OSStatus status = noErr;
    old_ = openRegularFileAt(folder_.number(), name_, Links::Keep, &status);
    return status == fnfErr ? noErr : status;
}

OSStatus ReplacedFile::takeTurn() {
    using namespace std::chrono_literals;
    const auto end = std::chrono::steady_clock::now() + 5s;
    for (;;) {
        const int error = tryTurn();
        if (error != EAGAIN)
            return statusFromErrno(error);
        if (std::chrono::steady_clock::now() > end)
            return fBsyErr;
        std::this_thread::sleep_for(2ms);
    }
}

/// Makes the temporary file and locks it. 0, EAGAIN while another has it, or an `errno` value.
int ReplacedFile::tryTurn() {
    Descriptor made(openat(folder_.number(), temporaryName_.constData(),
                           O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, fresh_.mode));
    if (!made)
        return errno == EEXIST ? removeStale() : errno;
    if (!isFree(made.number()) ||
        !isNamed(made.number(), folder_.number(), temporaryName_.constData()))
        return EAGAIN; // another took it for a stale one
    temporary_ = std::move(made);
    return 0;
}

/// Removes a temporary file that nobody has locked, and whatever else has its name, which is ours.
/// EAGAIN where it makes sense to try again.
int ReplacedFile::removeStale() const {
    const char *const name = temporaryName_.constData();
    struct stat item = {};
    if (fstatat(folder_.number(), name, &item, AT_SYMLINK_NOFOLLOW) != 0)
        return errno == ENOENT ? EAGAIN : errno;
    OSStatus status = noErr;
    const Descriptor stale =
        openRegularFileAt(folder_.number(), temporaryName_, Links::Keep, &status);
    // One that may not be opened cannot be asked; a writer takes no minute.
    constexpr time_t kLongest = 60;
    const bool isOld = time(nullptr) - item.st_mtime > kLongest;
    const bool mayGo =
        stale ? isFree(stale.number()) && isNamed(stale.number(), folder_.number(), name)
              : !S_ISREG(item.st_mode) || isOld;
    if (mayGo && unlinkat(folder_.number(), name, 0) != 0 && errno != ENOENT)
        return errno;
    return EAGAIN;
}

/// Gives the temporary file what the file that it replaces has. 0 or an `errno` value.
int ReplacedFile::dress() const {
    struct stat item = {};
    if (!old_) {
        (void)!fchown(temporary_.number(), fresh_.owner, fresh_.group);
        return 0;
    }
    if (fstat(old_.number(), &item) != 0)
        return errno;
    if (fchown(temporary_.number(), item.st_uid, item.st_gid) != 0 && errno != EPERM)
        return errno;
    copyAttributes(old_.number(), temporary_.number());
    return fchmod(temporary_.number(), item.st_mode & ACCESSPERMS) == 0 ? 0 : errno;
}

/// 0 or an `errno` value.
int ReplacedFile::fill(const QByteArray &content) const {
    if (const int error = dress())
        return error;
    if (const int error = writeAll(temporary_.number(), content))
        return error;
    return fsync(temporary_.number()) == 0 ? 0 : errno;
}

/// 0 or an `errno` value.
int ReplacedFile::putInPlace(unsigned renameFlags) {
    if (renameat2(folder_.number(), temporaryName_.constData(), folder_.number(), name_.constData(),
                  renameFlags) != 0)
        return errno;
    temporary_ = Descriptor();
    fsync(folder_.number());
    return 0;
}

std::optional<QByteArray> ReplacedFile::content(int64_t limit, OSStatus *status) const {
    return readWhole(old_.number(), limit, status);
}

OSStatus ReplacedFile::commit(const QByteArray &content) {
    int error = fill(content);
    if (error == 0)
        error = putInPlace(0);
    return statusFromErrno(error);
}

OSStatus ReplacedFile::commitNew(const QByteArray &content) {
    if (const int error = old_ ? EEXIST : fill(content))
        return statusFromErrno(error);
    const int error = putInPlace(RENAME_NOREPLACE);
    // Not every file system knows the flag.
    return statusFromErrno(error == EINVAL ? putInPlace(0) : error);
}

OSStatus ReplacedFile::commitRemoval() {
    if (unlinkat(folder_.number(), name_.constData(), 0) != 0 && errno != ENOENT)
        return statusFromErrno(errno);
    return noErr;
}

} // namespace MWCore
