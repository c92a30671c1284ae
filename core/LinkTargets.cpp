// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/LinkTargets.h"

#include "core/posix/LongPath.h"

#include <climits>
#include <cstdio>

#include <fcntl.h>

namespace MWCore {
namespace {

constexpr const char *kLabel = "link target";

/// As realpath(3), but for a path of any length: opens the item and reads the path that the kernel
/// reports for the descriptor.
Text realpathByDescriptor(const char *path) {
    const LongPath place(path);
    if (!place)
        return nullptr;
    const Descriptor item(openat(place.folder(), place.relativePath(), O_PATH | O_CLOEXEC));
    if (!item)
        return nullptr;
    char entry[32];
    std::snprintf(entry, sizeof entry, "/proc/self/fd/%d", item.number());
    char resolved[PATH_MAX];
    const ssize_t length = readlink(entry, resolved, sizeof resolved);
    if (length <= 0 || resolved[0] != '/')
        return nullptr;
    return copied({resolved, static_cast<std::size_t>(length)}, kLabel);
}

} // namespace

Text resolvedPath(const char *path) {
    Text resolved(realpath(path, nullptr));
    if (!resolved && errno == ENAMETOOLONG)
        resolved = realpathByDescriptor(path);
    return resolved;
}

Text LinkTargets::resolve(const char *name) {
    if (Text resolved = resolveToSibling(name))
        return resolved;
    const Text path = joinedPath(path_, name, kLabel);
    return path ? resolvedPath(path.get()) : nullptr;
}

/// The fast path for the usual case: the link names an item of its own folder that is not a link
/// itself. It takes two system calls per link at any depth. Null in all other cases.
Text LinkTargets::resolveToSibling(const char *name) {
    char target[NAME_MAX + 1];
    const ssize_t length = readlinkat(folder_, name, target, sizeof target);
    if (length <= 0 || length == sizeof target)
        return nullptr;
    target[length] = '\0';
    const std::string_view item(target, static_cast<std::size_t>(length));
    if (item.find('/') != std::string_view::npos || item == "." || item == "..")
        return nullptr;
    char ignored;
    const bool isNotALink = readlinkat(folder_, target, &ignored, 1) == -1 && errno == EINVAL;
    if (!isNotALink)
        return nullptr;
    if (!realFolder_)
        realFolder_.reset(realpath(path_, nullptr));
    if (!realFolder_)
        return nullptr;
    return joinedPath(realFolder_.get(), item, kLabel);
}

} // namespace MWCore
