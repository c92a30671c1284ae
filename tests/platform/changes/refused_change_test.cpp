// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// Failures that a test cannot provoke, such as a quota or a failing disk.
#include "platform/files/AtomicFile.h"
#include "tests/platform/changes/SystemCalls.h"
#include "tests/platform/metadata/attributes.h"
#include "tests/platform/metadata/finder_info.h"
#include "tests/platform/samples.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>

#include <fcntl.h>
#include <linux/fs.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/types.h>
#include <unistd.h>

namespace {

using namespace MWCore;

void setAppendOnly(const std::string &folder, int flag) {
    const int descriptor = open(folder.c_str(), O_RDONLY | O_DIRECTORY);
    int flags = 0;
    ASSERT_EQ(ioctl(descriptor, FS_IOC_GETFLAGS, &flags), 0);
    flags = (flags & ~FS_APPEND_FL) | flag;
    ASSERT_EQ(ioctl(descriptor, FS_IOC_SETFLAGS, &flags), 0);
    close(descriptor);
}

TEST(RefusedWrites, ReportTheCauseAndChangeNothing) {
    const struct {
        const char *call;
        int error;
        OSStatus status;
    } rows[] = {
        {"lsetxattr", EDQUOT, dskFulErr}, {"lsetxattr", E2BIG, dskFulErr},
        {"lsetxattr", ENOSPC, dskFulErr}, {"lsetxattr", EPERM, permErr},
        {"lsetxattr", EROFS, wPrErr},     {"lsetxattr", EIO, ioErr},
        {"write", EDQUOT, dskFulErr},     {"fsetxattr", ENOSPC, dskFulErr},
        {"renameat2", EROFS, wPrErr},     {"fsync", EIO, ioErr},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(std::string(row.call) + " " + strerror(row.error));
        const TemporaryFolder folder;
        const std::string item = folder.file("item");
        ASSERT_TRUE(raw::setAttribute(item, kBare, samples::finderInfo(kRed)));
        raw::write(folder.at("._item"), samples::sidecar(kRed));
        ASSERT_TRUE(raw::setAttribute(folder.at("._item"), "user.note", "kept"));
        OSStatus status = noErr;
        {
            const SystemCalls calls(SystemCalls::refusing(row.call, row.error));
            status = writeLabel(item, 2);
        }
        EXPECT_EQ(status, row.status);
        EXPECT_EQ(raw::attribute(item, kBare), samples::finderInfo(kRed));
        EXPECT_EQ(raw::content(folder.at("._item")), samples::sidecar(kRed));
        EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2);
    }
}

TEST(RefusedWrites, AreNotCausedByLocks) {
    const TemporaryFolder folder;
    const std::string item = folder.file("item");
    OSStatus status = noErr;
    for (const int error : {ENOLCK, EWOULDBLOCK}) { // no locks, and a lock held for ever
        const SystemCalls calls(SystemCalls::refusing("flock", error));
        EXPECT_EQ(writeResourceFork(item.c_str(), QByteArray::number(error)), noErr);
        EXPECT_EQ(readResourceFork(item.c_str(), &status), QByteArray::number(error));
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2);
}

TEST(RefusedWrites, AreNotCausedByMissingFileSystemFeatures) {
    const TemporaryFolder folder;
    const SystemCalls calls([](const std::string &call) {
        return call == "openat without a name"  ? EOPNOTSUPP
               : call == "renameat2 with flags" ? EINVAL
                                                : 0;
    });
    for (const char *const content : {"new", "replaced"}) {
        OSStatus status = noErr;
        const auto place = ItemLocator::find(folder.at("file").c_str(), &status);
        auto file = AtomicFile::begin(*place, &status);
        ASSERT_TRUE(file);
        EXPECT_EQ(file->replace(content, {0600, geteuid(), getegid()}), noErr);
        EXPECT_EQ(raw::content(folder.at("file")), content);
    }
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

TEST(RefusedWrites, LeaveNothingInAnAppendOnlyFolder) {
    if (geteuid() != 0)
        GTEST_SKIP() << "needs the superuser";
    const TemporaryFolder folder;
    const std::string item = folder.file("item");
    raw::write(folder.at("._item"), samples::sidecar(0));
    setAppendOnly(folder.path(), FS_APPEND_FL);
    EXPECT_EQ(writeResourceFork(item.c_str(), "fork"), permErr);
    setAppendOnly(folder.path(), 0);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 2);
}

TEST(RefusedWrites, AreNotCausedBySparseForks) {
    const TemporaryFolder folder;
    const std::string item = folder.file("item");
    constexpr qsizetype kLength = 8 << 20;
    const QByteArray fork = QByteArray(kLength, '\0') + "data" + QByteArray(kLength, '\0');
    ASSERT_EQ(writeResourceFork(item.c_str(), fork), noErr);
    OSStatus status = noErr;
    EXPECT_EQ(readResourceFork(item.c_str(), &status), fork);
    struct stat sidecar = {};
    ASSERT_EQ(stat(folder.at("._item").c_str(), &sidecar), 0);
    EXPECT_LT(sidecar.st_blocks * 512, kLength);
}

} // namespace
