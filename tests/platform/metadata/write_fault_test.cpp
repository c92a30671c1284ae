// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// Refusals that a test cannot provoke here: quotas, and a disk that fails. The linker puts the
// functions below before those of libc.
#include "platform/files/ReplacedFile.h"
#include "platform/metadata/MetadataStore.h"
#include "tests/platform/metadata/attributes.h"
#include "tests/platform/samples.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

#include <fcntl.h>
#include <sys/types.h>
#include <unistd.h>

namespace {

/// The call that is refused from now on, and why; nothing for none.
struct Refusal {
    std::string call;
    int error = 0;
} refusal;

bool noUnnamedFiles = false; ///< O_TMPFILE is refused

bool isRefused(const char *call) {
    if (refusal.call != call)
        return false;
    errno = refusal.error;
    return true;
}

} // namespace

extern "C" {

int __real_lsetxattr(const char *, const char *, const void *, std::size_t, int);
int __wrap_lsetxattr(const char *path, const char *name, const void *value, std::size_t size,
                     int flags) {
    return isRefused("lsetxattr") ? -1 : __real_lsetxattr(path, name, value, size, flags);
}

ssize_t __real_write(int, const void *, std::size_t);
ssize_t __wrap_write(int descriptor, const void *bytes, std::size_t size) {
    return isRefused("write") ? -1 : __real_write(descriptor, bytes, size);
}

int __real_fsync(int);
int __wrap_fsync(int descriptor) {
    return isRefused("fsync") ? -1 : __real_fsync(descriptor);
}

int __real_renameat2(int, const char *, int, const char *, unsigned);
int __wrap_renameat2(int from, const char *name, int to, const char *newName, unsigned flags) {
    return isRefused(flags == 0 ? "renameat2" : "renameat2 with flags")
               ? -1
               : __real_renameat2(from, name, to, newName, flags);
}

int __real_flock(int, int);
int __wrap_flock(int descriptor, int operation) {
    return isRefused("flock") ? -1 : __real_flock(descriptor, operation);
}

int __real_openat(int, const char *, int, ...);
int __wrap_openat(int folder, const char *path, int flags, mode_t mode) {
    if (noUnnamedFiles && (flags & O_TMPFILE) == O_TMPFILE) {
        errno = EOPNOTSUPP;
        return -1;
    }
    return __real_openat(folder, path, flags, mode);
}

} // extern "C"

namespace {

using namespace MWCore;

constexpr uint16_t kRed = 6 << 1;
constexpr const char *kBare = "user.com.apple.FinderInfo";

OSStatus writeLabel(const std::string &path, int number) {
    FinderInfo info;
    EXPECT_EQ(readFinderInfo(path.c_str(), &info), noErr);
    info.setLabelNumber(number);
    return writeFinderInfo(path.c_str(), info);
}

TEST(RefusedWrites, TellWhyAndLeaveEverythingAsItWas) {
    const struct {
        const char *call;
        int error;
        OSStatus status;
    } rows[] = {
        {"lsetxattr", EDQUOT, dskFulErr}, {"lsetxattr", E2BIG, dskFulErr},
        {"lsetxattr", ENOSPC, dskFulErr}, {"lsetxattr", EPERM, permErr},
        {"lsetxattr", EROFS, wPrErr},     {"lsetxattr", EIO, ioErr},
        {"write", EDQUOT, dskFulErr},     {"fsync", EIO, ioErr},
        {"renameat2", EROFS, wPrErr},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(std::string(row.call) + " " + strerror(row.error));
        const TemporaryFolder folder;
        const std::string item = folder.file("item");
        ASSERT_TRUE(raw::setAttribute(item, kBare, samples::finderInfo(kRed)));
        raw::write(folder.at("._item"), samples::sidecar(kRed));
        refusal = {row.call, row.error};
        const OSStatus status = writeLabel(item, 2);
        refusal = {};
        EXPECT_EQ(status, row.status);
        EXPECT_EQ(raw::attribute(item, kBare), samples::finderInfo(kRed));
        EXPECT_EQ(raw::content(folder.at("._item")), samples::sidecar(kRed));
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2);
    }
}

TEST(RefusedWrites, DoNotComeFromLocks) {
    const TemporaryFolder folder;
    const std::string item = folder.file("item");
    OSStatus status = noErr;
    for (const int error : {ENOLCK, EWOULDBLOCK}) { // none to be had, and one held for ever
        refusal = {"flock", error};
        EXPECT_EQ(writeResourceFork(item.c_str(), QByteArray::number(error)), noErr);
        refusal = {};
        EXPECT_EQ(readResourceFork(item.c_str(), &status), QByteArray::number(error));
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2);
}

TEST(RefusedWrites, OfWhatAFileSystemDoesNotKnowDoNotKeepAFileAway) {
    const TemporaryFolder folder;
    noUnnamedFiles = true;
    refusal = {"renameat2 with flags", EINVAL};
    for (const char *const content : {"new", "replaced"}) {
        OSStatus status = noErr;
        const auto place = ItemPlace::find(folder.at("file").c_str(), &status);
        auto file = ReplacedFile::begin(*place, &status);
        ASSERT_TRUE(file);
        EXPECT_EQ(file->replace(content, {0600, geteuid(), getegid()}), noErr);
        EXPECT_EQ(raw::content(folder.at("file")), content);
    }
    refusal = {};
    noUnnamedFiles = false;
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

} // namespace
