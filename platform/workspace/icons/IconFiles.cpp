// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/icons/IconFiles.h"

#include "platform/files/DescriptorPath.h"
#include "platform/files/MountTable.h"
#include "platform/files/PathParts.h"
#include "platform/files/RegularFile.h"
#include "platform/foundation/FileSystemText.h"
#include "platform/workspace/themes/IconThemeIndex.h"

#include <cerrno>
#include <climits>
#include <initializer_list>
#include <utility>

#include <QHashFunctions>

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace MWCore {
namespace {

/// The item at @p path, if no part of the path is a link. Kernels before 5.6 and some sandboxes
/// lack the call; there, links are followed first.
Descriptor openWithoutLinks(const QByteArray &path) {
    open_how how = {};
    how.flags = O_PATH | O_CLOEXEC | O_NOFOLLOW;
    how.resolve = RESOLVE_NO_SYMLINKS;
    const long opened = syscall(SYS_openat2, AT_FDCWD, path.constData(), &how, sizeof how);
    if (opened >= 0 || (errno != ENOSYS && errno != EPERM))
        return Descriptor(static_cast<int>(opened));
    Descriptor item(open(path.constData(), O_PATH | O_CLOEXEC | O_NOFOLLOW));
    return item && realPathOfDescriptor(item.number()) == path ? std::move(item) : Descriptor();
}

/// Reads the regular file that @p item refers to.
std::optional<QByteArray> readFile(const Descriptor &item, int64_t limit) {
    OSStatus status = noErr;
    return item
               ? readRegularFile(pathOfDescriptor(item.number()), limit, FinalLink::Follow, &status)
               : std::nullopt;
}

/// A number that depends on every bit of all @p numbers; not 0.
uint64_t mixed(std::initializer_list<uint64_t> numbers) {
    const std::size_t hash = qHashBits(numbers.begin(), numbers.size() * sizeof(uint64_t));
    return hash == 0 ? 1 : hash;
}

} // namespace

uint64_t versionOf(const struct stat &file) {
    return mixed({uint64_t{file.st_dev}, uint64_t{file.st_ino}, uint64_t(file.st_size),
                  uint64_t(file.st_mtim.tv_sec), uint64_t(file.st_mtim.tv_nsec),
                  uint64_t(file.st_ctim.tv_sec), uint64_t(file.st_ctim.tv_nsec)});
}

void addVersion(IconRef &icon, uint64_t version) {
    icon.version = mixed({icon.version, version});
}

std::optional<QByteArray> IconFile::read(int64_t limit) const {
    return readFile(item, limit);
}

std::optional<IconFile> findIconFile(ResponsiveFiles &files, const QByteArray &path) {
    QByteArray real;
    Descriptor found = files.open(path, &real);
    struct stat item = {};
    const bool isRegular = found && fstat(found.number(), &item) == 0 && S_ISREG(item.st_mode);
    return isRegular ? std::optional(IconFile{std::move(found), real, versionOf(item)})
                     : std::nullopt;
}

void setFile(IconRef &icon, const IconFile &file) {
    icon.file = file.path;
    addVersion(icon, file.version);
}

void setThemeName(IconRef &icon, const QString &name) {
    const auto bytes = fileSystemRepresentation(name);
    if (!bytes || !isPlainName(*bytes) || bytes->size() > NAME_MAX)
        return;
    const qsizetype known = icon.themeNames.indexOf(name);
    icon.ownNames += known >= 0 && known < icon.ownNames ? 0 : 1;
    icon.themeNames.removeAll(name);
    icon.themeNames.prepend(name);
    icon.file.clear();
    icon.thumbnailOf.clear();
    icon.version = 0;
}

std::optional<QByteArray> readIconFile(const QByteArray &path, int64_t limit) {
    return readFile(openWithoutLinks(path), limit);
}

FolderFiles::FolderFiles(const QByteArray &folder) : files_(folder) {
    if (!files_.open(folder, &path_))
        path_.clear();
}

std::optional<IconFile> FolderFiles::find(const QByteArray &name) {
    auto file = findAnywhere(name);
    return file && isAtOrBelow(file->path, path_) ? std::move(file) : std::nullopt;
}

std::optional<IconFile> FolderFiles::findAnywhere(const QByteArray &name) {
    return path_.isEmpty() ? std::nullopt : findIconFile(files_, pathIn(path_, name));
}

} // namespace MWCore
