// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/support/MountedFolder.h"

#include "tests/support/Process.h"

#include <cerrno>
#include <cstring>

#include <sched.h>
#include <sys/mount.h>
#include <sys/stat.h>

namespace {

/// Gives this process a mount namespace of its own, once. Returns 0 or an `errno` value.
int unshareMounts() {
    static const int error = [] {
        const bool isUnshared = unshare(CLONE_NEWNS) == 0 &&
                                mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0;
        return isUnshared ? 0 : errno;
    }();
    return error;
}

} // namespace

MountedFolder::MountedFolder(const std::string &type, const std::string &options)
    : path_(folder_.folder("mounted")) {
    chmod(folder_.path().c_str(), 0755); // lets other users reach the mount
    if (const int error = unshareMounts()) {
        obstacle_ = std::string("no mount namespace of our own: ") + strerror(error);
        return;
    }
    const std::string image = folder_.at("image");
    const std::string more = options.empty() ? "" : "," + options;
    if (type == "tmpfs" || type == "ramfs")
        (void)run("mount -t " + type + " -o mode=755" + more + " none " + path_);
    else
        (void)(run("truncate -s 512M " + image) && run("mkfs." + type + " -q " + image) &&
               run("mount -o loop" + more + " " + image + " " + path_));
}

MountedFolder::~MountedFolder() {
    umount2(path_.c_str(), MNT_DETACH);
}

bool MountedFolder::remount(const std::string &options) const {
    return runProcess({"mount", "-o", "remount," + options, path_}).status == 0;
}

bool MountedFolder::run(const std::string &command) {
    const ProcessResult result = runProcess({"sh", "-c", command});
    if (result.status != 0)
        obstacle_ = command + ": " + result.errorOutput;
    return result.status == 0;
}
