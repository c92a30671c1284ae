// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/CurrentMounts.h"

#include "tests/support/MountedFolder.h"
#include "tests/support/Process.h"

#include <gtest/gtest.h>

#include <algorithm>

#include <sched.h>
#include <sys/mount.h>

namespace {

using namespace MWCore;

bool isListed(const std::string &mountPoint) {
    const auto mounts = currentMounts();
    return std::ranges::find(*mounts, QByteArray::fromStdString(mountPoint), &Mount::mountPoint) !=
           mounts->end();
}

TEST(CurrentMounts, AreReadAgainAfterAChangeOnly) {
    const MountedFolder own("tmpfs"); // in a namespace that the first call may not have seen
    if (!own.failureReason().empty())
        GTEST_SKIP() << own.failureReason();
    EXPECT_TRUE(isListed(own.path()));
    const auto before = currentMounts();
    EXPECT_EQ(currentMounts(), before) << "read again without a change";
    {
        const MountedFolder another("tmpfs");
        EXPECT_TRUE(isListed(another.path()));
        EXPECT_EQ(umount(another.path().c_str()), 0);
        EXPECT_FALSE(isListed(another.path()));
    }
    // A child shares the descriptor on which the news arrives, and must not take it away.
    const TemporaryFolder folder;
    const std::string later = folder.folder("later");
    EXPECT_EQ(mount("none", later.c_str(), "tmpfs", 0, nullptr), 0);
    EXPECT_EQ(runForked([&] { return isListed(later) ? 0 : 1; }), 0);
    EXPECT_TRUE(isListed(later)) << "a child was told first";
    EXPECT_EQ(runForked([&] {
                  const bool isSeen = isListed(later);
                  const bool isAlone = unshare(CLONE_NEWNS) == 0 && umount(later.c_str()) == 0;
                  return isSeen && isAlone && !isListed(later) ? 0 : 1;
              }),
              0)
        << "in another namespace";
    EXPECT_EQ(umount(later.c_str()), 0);
}

} // namespace
