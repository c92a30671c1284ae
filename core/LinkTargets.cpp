// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/LinkTargets.h"

#include "core/posix/ReachablePath.h"

#include <climits>
#include <cstdio>

#include <fcntl.h>

namespace MWCore {
namespace {

constexpr const char *kLabel = "link target";

/// The path under which the kernel knows what @p path leads to; asked through a descriptor, so that
/// the length of @p path does not matter.
Text pathInKernel(const char *path) {
    const ReachablePath place(path);
    if (!place)
        return nullptr;
    const Descriptor item(openat(place.folder(), place.rest(), O_PATH | O_CLOEXEC));
    if (!item)
        return nullptr;
    char entry[32];
    std::snprintf(entry, sizeof entry, "/proc/self/fd/%d", item.number());
    char known[PATH_MAX];
    const ssize_t length = readlink(entry, known, sizeof known);
    if (length <= 0 || known[0] != '/')
        return nullptr;
    return copied({known, static_cast<std::size_t>(length)}, kLabel);
}

} // namespace

Text resolvedPath(const char *path) {
    Text resolved(realpath(path, nullptr));
    if (!resolved && errno == ENAMETOOLONG)
        resolved = pathInKernel(path);
    return resolved;
}

Text LinkTargets::resolve(const char *name) {
    if (Text resolved = neighbour(name))
        return resolved;
    const Text path = joinedPath(path_, name, kLabel);
    return path ? resolvedPath(path.get()) : nullptr;
}

/// The short way for the usual case, two system calls however deep the folder: the link names an
/// item of its own folder, and that item is no link itself. Null for any other.
Text LinkTargets::neighbour(const char *name) {
    char target[NAME_MAX + 1];
    const ssize_t length = readlinkat(folder_, name, target, sizeof target);
    if (length <= 0 || length == sizeof target)
        return nullptr;
    target[length] = '\0';
    const std::string_view item(target, static_cast<std::size_t>(length));
    if (item.find('/') != std::string_view::npos || item == "." || item == "..")
        return nullptr;
    char ignored;
    const bool isNoLink = readlinkat(folder_, target, &ignored, 1) == -1 && errno == EINVAL;
    if (!isNoLink)
        return nullptr;
    if (!realFolder_)
        realFolder_.reset(realpath(path_, nullptr));
    if (!realFolder_)
        return nullptr;
    return joinedPath(realFolder_.get(), item, kLabel);
}

} // namespace MWCore
