// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "OutputFolder.h"

#include "Failure.h"

#include <cerrno>
#include <cstdio>
#include <memory>
#include <string_view>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace MWCore::mwfile {
namespace {

constexpr int kFolderFlags = O_RDONLY | O_DIRECTORY | O_CLOEXEC;
constexpr mode_t kFolderMode = 0777;
constexpr mode_t kFileMode = 0666;

int openedFolder(int parent, const std::string &name, int flags, const std::string &path) {
    const int descriptor = openat(parent, name.c_str(), kFolderFlags | flags);
    if (descriptor < 0)
        throw Failure(path, errno == ENOTDIR ? errFSNotAFolder : statusFromErrno(errno));
    return descriptor;
}

/// Makes the folder @p name if nothing is there, and opens it.
int madeFolder(int parent, const std::string &name, int flags, const std::string &path) {
    if (mkdirat(parent, name.c_str(), kFolderMode) != 0 && errno != EEXIST)
        throw Failure(path, statusFromErrno(errno));
    return openedFolder(parent, name, flags, path);
}

/// Writes and closes @p descriptor; the `errno` value.
int writtenAll(int descriptor, const QByteArray &content) {
    const std::unique_ptr<FILE, int (*)(FILE *)> file(fdopen(descriptor, "w"), &std::fclose);
    if (!file) {
        const int error = errno;
        close(descriptor);
        return error;
    }
    const auto length = static_cast<std::size_t>(content.size());
    const bool isWritten = std::fwrite(content.constData(), 1, length, file.get()) == length &&
                           std::fflush(file.get()) == 0;
    return isWritten ? 0 : errno;
}

/// Renames a file; the `errno` value. EEXIST if something is in the way that is to be kept.
int renamed(int folder, const std::string &from, const std::string &to, Existing existing) {
    const auto tried = [&](unsigned flags) {
        return renameat2(folder, from.c_str(), folder, to.c_str(), flags) == 0 ? 0 : errno;
    };
    if (existing == Existing::Replace)
        return tried(0);
    const int error = tried(RENAME_NOREPLACE);
    if (error != EINVAL) // the file system cannot check it
        return error;
    return faccessat(folder, to.c_str(), F_OK, AT_SYMLINK_NOFOLLOW) == 0 ? EEXIST : tried(0);
}

} // namespace

OutputFolder::OutputFolder(const std::string &path, Existing existing)
    : OutputFolder(path, madeFolder(AT_FDCWD, path, 0, path)) {
    if (existing == Existing::Keep && !isEmpty())
        throw Failure(path, "not empty; --force writes into it");
}

OutputFolder::OutputFolder(std::string path, int descriptor)
    : path_(std::move(path)), descriptor_(descriptor) {}

OutputFolder OutputFolder::containing(const std::string &path) {
    const std::string folder = path.substr(0, path.rfind('/') + 1);
    return {folder, openedFolder(AT_FDCWD, folder.empty() ? "." : folder, 0, path)};
}

OutputFolder::~OutputFolder() {
    close(descriptor_);
}

OutputFolder OutputFolder::subfolder(const std::string &name) const {
    const std::string path = pathOf(name);
    return {path, madeFolder(descriptor_, name, O_NOFOLLOW, path)};
}

void OutputFolder::write(const std::string &name, const QByteArray &content,
                         Existing existing) const {
    const std::string path = pathOf(name);
    const std::string temporary = "." + name + "." + std::to_string(getpid());
    const int descriptor =
        openat(descriptor_, temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kFileMode);
    if (descriptor < 0)
        throw Failure(path, statusFromErrno(errno));
    int error = writtenAll(descriptor, content);
    if (error == 0)
        error = renamed(descriptor_, temporary, name, existing);
    if (error == 0)
        return;
    unlinkat(descriptor_, temporary.c_str(), 0);
    throw Failure(path, statusFromErrno(error));
}

std::string OutputFolder::pathOf(const std::string &name) const {
    return path_ + (path_.empty() || path_.ends_with('/') ? "" : "/") + name;
}

bool OutputFolder::isEmpty() const {
    const int descriptor = openat(descriptor_, ".", kFolderFlags);
    const std::unique_ptr<DIR, int (*)(DIR *)> folder(
        descriptor < 0 ? nullptr : fdopendir(descriptor), &closedir);
    if (!folder)
        throw Failure(path_, statusFromErrno(errno));
    errno = 0;
    while (const dirent *const entry = readdir(folder.get())) {
        const std::string_view name = entry->d_name;
        if (name != "." && name != "..")
            return false;
    }
    if (errno != 0)
        throw Failure(path_, statusFromErrno(errno));
    return true;
}

} // namespace MWCore::mwfile
