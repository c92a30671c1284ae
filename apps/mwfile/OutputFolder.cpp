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

/// Makes the folder @p name if nothing is there, and opens it.
int openedFolder(int parent, const std::string &name, int flags, const std::string &path) {
    if (mkdirat(parent, name.c_str(), kFolderMode) != 0 && errno != EEXIST)
        throw Failure(path, statusFromErrno(errno));
    const int descriptor = openat(parent, name.c_str(), kFolderFlags | flags);
    if (descriptor < 0)
        throw Failure(path, errno == ENOTDIR ? errFSNotAFolder : statusFromErrno(errno));
    return descriptor;
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

} // namespace

OutputFolder::OutputFolder(const std::string &path, Existing existing)
    : OutputFolder(path, openedFolder(AT_FDCWD, path, 0, path)) {
    if (existing == Existing::Keep && !isEmpty())
        throw Failure(path, "not empty; --force writes into it");
}

OutputFolder::OutputFolder(std::string path, int descriptor)
    : path_(std::move(path)), descriptor_(descriptor) {}

OutputFolder::~OutputFolder() {
    close(descriptor_);
}

OutputFolder OutputFolder::subfolder(const std::string &name) const {
    const std::string path = path_ + "/" + name;
    return {path, openedFolder(descriptor_, name, O_NOFOLLOW, path)};
}

void OutputFolder::write(const std::string &name, const QByteArray &content) const {
    const std::string path = path_ + "/" + name;
    const std::string temporary = "." + name + "." + std::to_string(getpid());
    const int descriptor =
        openat(descriptor_, temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, kFileMode);
    if (descriptor < 0)
        throw Failure(path, statusFromErrno(errno));
    int error = writtenAll(descriptor, content);
    if (error == 0 && renameat(descriptor_, temporary.c_str(), descriptor_, name.c_str()) != 0)
        error = errno;
    if (error == 0)
        return;
    unlinkat(descriptor_, temporary.c_str(), 0);
    throw Failure(path, statusFromErrno(error));
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
