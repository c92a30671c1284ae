// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/support/Process.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/texts.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <climits>
#include <filesystem>
#include <map>
#include <set>

#include <fcntl.h>
#include <grp.h>
#include <pwd.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

extern "C" int count_by_iteration(const char *path); // c_interface.c

namespace {

std::vector<const mfs_fso *> childrenOf(const mfs_fso *folder) {
    std::vector<const mfs_fso *> children;
    for (const mfs_array *const array : {folder->files, folder->subdirectories})
        for (int32_t index = 0; index < mfs_array_count(array); ++index)
            children.push_back(static_cast<mfs_fso *>(mfs_array_value_at_index(array, index)));
    return children;
}

const mfs_fso *childNamed(const Tree &folder, const std::string &name) {
    for (const mfs_fso *const child : childrenOf(folder.get()))
        if (child->name == name)
            return child;
    return nullptr;
}

template <typename Entry> std::string nameOr(const Entry *entry, char *Entry::*name) {
    return entry ? entry->*name : "Unknown";
}

int targetTypeOf(const std::string &path) {
    struct stat target;
    if (stat(path.c_str(), &target) != 0)
        return MFS_TARGET_UNKNOWN;
    return S_ISREG(target.st_mode)   ? MFS_TYPE_FILE
           : S_ISDIR(target.st_mode) ? MFS_TYPE_DIRECTORY
                                     : 0;
}

/// Compares a record with the results of stat and realpath for the same path.
void expectAgreesWithStat(const mfs_fso *item, const std::string &path) {
    SCOPED_TRACE(path);
    struct stat now;
    ASSERT_EQ(lstat(path.c_str(), &now), 0);
    const std::map<mode_t, int> types = {
        {S_IFDIR, MFS_TYPE_DIRECTORY}, {S_IFREG, MFS_TYPE_FILE}, {S_IFLNK, MFS_TYPE_LINK}};
    const auto type = types.find(now.st_mode & S_IFMT);
    EXPECT_EQ(item->type, type == types.end() ? MFS_TYPE_OTHER : type->second);
    EXPECT_TRUE(item->location == MFS_LOCATION_LOCAL && mfs_fso_isLocal(item));
    EXPECT_FALSE(mfs_fso_isRemote(item));
    EXPECT_EQ(mfs_fso_isDir(item), S_ISDIR(now.st_mode));
    EXPECT_EQ(mfs_fso_isFile(item), S_ISREG(now.st_mode));
    EXPECT_EQ(mfs_fso_isLink(item), S_ISLNK(now.st_mode));
    EXPECT_EQ(item->permissions, mfs_get_perms_from_mode(now.st_mode));
    struct stat followed;
    EXPECT_EQ(item->mode, stat(path.c_str(), &followed) == 0 ? followed.st_mode & 07777 : 0);
    EXPECT_EQ(item->owner, nameOr(getpwuid(now.st_uid), &passwd::pw_name));
    EXPECT_EQ(item->group, nameOr(getgrgid(now.st_gid), &group::gr_name));
    EXPECT_EQ(item->links, static_cast<int32_t>(now.st_nlink));
    EXPECT_EQ(item->size, static_cast<int32_t>(now.st_size));
    EXPECT_EQ(mfs_fso_full_size(item), now.st_size);
    EXPECT_EQ(item->mod_time, now.st_mtime);
    EXPECT_EQ(item->date_modified, takeText(mfs_date_string_from_time_t(now.st_mtime)));
    EXPECT_EQ(item->complete_path, path);
    EXPECT_EQ(item->files != nullptr, S_ISDIR(now.st_mode));
    if (!S_ISLNK(now.st_mode)) {
        EXPECT_EQ(item->target_type, 0);
        EXPECT_EQ(item->alias_location, nullptr);
        return;
    }
    EXPECT_EQ(item->target_type, targetTypeOf(path));
    if (item->target_type == MFS_TARGET_UNKNOWN)
        EXPECT_EQ(item->alias_location, nullptr);
    else
        EXPECT_EQ(item->alias_location, takeText(realpath(path.c_str(), nullptr)));
}

TEST(Listing, AgreesWithStatAndRealpathOnRealFolders) {
    for (const std::string path : {"/usr/bin", "/etc", "/usr/lib"}) {
        const Tree folder = listed(path);
        ASSERT_NE(folder, nullptr) << path;
        for (const mfs_fso *const child : childrenOf(folder.get())) {
            EXPECT_EQ(child->parent, folder.get());
            expectAgreesWithStat(child, path + "/" + child->name);
        }
    }
}

TEST(Listing, ContainsEveryNameOfAFolder) {
    for (const std::string path : {"/", "/usr/bin", "/proc/self"}) {
        const Tree folder = listed(path);
        ASSERT_NE(folder, nullptr) << path;
        std::set<std::string> names;
        for (const mfs_fso *const child : childrenOf(folder.get())) {
            names.insert(child->name);
            EXPECT_EQ(child->complete_path, (path == "/" ? "" : path) + "/" + child->name);
        }
        std::set<std::string> expected;
        for (const auto &entry : std::filesystem::directory_iterator(path))
            expected.insert(entry.path().filename());
        EXPECT_EQ(names, expected) << path;
    }
}

TEST(Listing, AgreesWithLsOnTheOrder) {
    const Tree folder = listed("/usr/bin");
    std::string ours;
    for (const mfs_fso *const child : childrenOf(folder.get()))
        ours += std::string(child->name) + "\n";
    EXPECT_EQ(ours, runProcess({"ls", "-U", "-A", "/usr/bin"}).output);
}

TEST(Listing, DescribesEveryKindOfItem) {
    const TemporaryFolder folder;
    folder.file("plain.txt", 5);
    folder.file("huge", uintmax_t{3} << 30);
    folder.file("wraps to 1", (uintmax_t{1} << 32) + 1);
    folder.folder("sub");
    folder.fifo("fifo");
    const int socketDescriptor = socket(AF_UNIX, SOCK_STREAM, 0);
    sockaddr_un address{AF_UNIX, {}};
    std::strncpy(address.sun_path, folder.at("socket").c_str(), sizeof address.sun_path - 1);
    ASSERT_EQ(bind(socketDescriptor, reinterpret_cast<sockaddr *>(&address), sizeof address), 0);
    close(socketDescriptor);
    ASSERT_EQ(chmod(folder.at("plain.txt").c_str(), 04755), 0);
    const std::pair<const char *, const char *> links[] = {
        {"to file", "plain.txt"}, {"to folder", "sub"},
        {"to fifo", "fifo"},      {"to link", "to file"},
        {"to parent", ".."},      {"to itself", "."},
        {"absolute", "/usr/bin"}, {"roundabout", "sub/../plain.txt"},
        {"dangling", "nowhere"},  {"loop", "pool"},
        {"pool", "loop"},         {"into file", "plain.txt/x"},
    };
    for (const auto &[name, target] : links)
        folder.link(name, target);

    const Tree tree = listed(folder.path());
    for (const mfs_fso *const child : childrenOf(tree.get()))
        expectAgreesWithStat(child, folder.at(child->name));
    EXPECT_EQ(mfs_fso_subdirectory_count(tree.get()), 1) << "a link to a folder is not a folder";
    EXPECT_EQ(childNamed(tree, "plain.txt")->permissions, 755);
    EXPECT_LT(childNamed(tree, "huge")->size, 0);
    EXPECT_STREQ(childNamed(tree, "plain.txt")->extension, "txt");
}

TEST(Listing, ALinkWhoseTargetHasNoPathSaysSo) {
    // This descriptor's link in /proc has a target, but its text is not a path.
    int ends[2];
    ASSERT_EQ(pipe2(ends, O_CLOEXEC), 0);
    const Tree folder = listed("/proc/self/fd");
    const mfs_fso *const item = childNamed(folder, std::to_string(ends[0]));
    ASSERT_NE(item, nullptr);
    EXPECT_EQ(item->target_type, 0);
    EXPECT_STREQ(item->alias_location, "Link is broken. Use the finder to fix");
    EXPECT_STREQ(item->complete_alias_path, "/proc/self/fd/Link is broken. Use the finder to fix");
    const TemporaryFolder place; // a descriptor of a link: the target is a link, which has no path
    const int link = open(place.link("link", "gone").c_str(), O_PATH | O_NOFOLLOW | O_CLOEXEC);
    const Tree again = listed("/proc/self/fd");
    EXPECT_EQ(childNamed(again, std::to_string(link))->target_type, 0);
    close(link);
    close(ends[0]);
    close(ends[1]);
}

TEST(Listing, PathsKeepTheirForm) {
    const TemporaryFolder folder;
    folder.folder("sub");
    folder.file("sub/x");
    struct Row {
        std::string path, name, complete, childPath;
    };
    const Row rows[] = {
        {folder.at("sub"), "sub", folder.at("sub"), folder.at("sub/x")},
        {folder.at("sub/"), "", folder.at("sub"), folder.at("sub/x")},
        {"sub", "sub", "sub", "sub/x"},
        {"./sub", "sub", "./sub", "./sub/x"},
    };
    const std::string before = std::filesystem::current_path();
    std::filesystem::current_path(folder.path());
    for (const Row &row : rows) {
        const Tree tree = listed(row.path);
        EXPECT_EQ(tree->name, row.name);
        EXPECT_EQ(tree->complete_path, row.complete);
        EXPECT_EQ(childNamed(tree, "x")->complete_path, row.childPath);
    }
    std::filesystem::current_path(before);
}

TEST(Listing, FollowsALinkAtTheEndOfThePathUnlessAskedForTheItem) {
    const TemporaryFolder folder;
    folder.folder("sub");
    folder.file("sub/x");
    const std::string link = folder.link("link", "sub");
    const std::string dangling = folder.link("dangling", "nowhere");
    const Tree followed = listed(link);
    EXPECT_EQ(followed->type, MFS_TYPE_DIRECTORY);
    EXPECT_EQ(followed->complete_path, link);
    EXPECT_EQ(mfs_fso_file_count(followed.get()), 1);
    EXPECT_EQ(followed->parent, nullptr);

    const CapturedTrace quiet;
    EXPECT_EQ(count_by_iteration(link.c_str()), 1) << "from C";
    EXPECT_EQ(listed(dangling), nullptr);
    errno = EDOM;
    EXPECT_NE(Tree(mfs_fso_get_local_item(dangling.c_str())), nullptr);
    EXPECT_EQ(errno, EDOM);
    for (const std::string &path : {link, dangling, folder.at("sub")}) {
        const Tree item(mfs_fso_get_local_item(path.c_str()));
        expectAgreesWithStat(item.get(), path);
        EXPECT_EQ(mfs_array_count(item->files), 0) << "not listed";
    }
}

TEST(Listing, KeepsNamesOfAnyBytes) {
    const TemporaryFolder folder;
    const std::set<std::string> names = {
        std::string(255, 'n'), "\xff\xfe", "a\nb", "\x1b[31m", " lead", "trail ", "-rf", "\\", "é",
    };
    for (const std::string &name : names)
        folder.file(name);
    const Tree tree = listed(folder.path());
    std::set<std::string> found;
    for (const mfs_fso *const child : childrenOf(tree.get())) {
        found.insert(child->name);
        EXPECT_EQ(access(child->complete_path, F_OK), 0);
    }
    EXPECT_EQ(found, names);
}

TEST(Listing, ReachesPathsBeyondTheSystemsLimit) {
    const TemporaryFolder folder;
    const std::string step(200, 'd');
    std::string path = folder.path();
    int place = open(path.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
    for (int depth = 0; depth < 60; ++depth) { // 12,000 bytes, three times the limit
        ASSERT_EQ(mkdirat(place, step.c_str(), 0755), 0);
        const int next = openat(place, step.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC);
        close(place);
        place = next;
        path += "/" + step;
    }
    close(openat(place, "file", O_CREAT | O_WRONLY | O_CLOEXEC, 0644));
    ASSERT_EQ(symlinkat("/usr/bin", place, "link"), 0);
    close(place);
    ASSERT_GT(path.size(), 2 * PATH_MAX);

    const CapturedTrace quiet;
    const Tree tree = listed(path);
    ASSERT_NE(tree, nullptr);
    EXPECT_EQ(childNamed(tree, "file")->complete_path, path + "/file");
    EXPECT_STREQ(childNamed(tree, "link")->alias_location,
                 std::filesystem::canonical("/usr/bin").c_str());
    EXPECT_NE(listed(path + "//"), nullptr);
    EXPECT_EQ(listed(path + "/missing"), nullptr);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(listed("/" + std::string(2 * PATH_MAX, 'x')), nullptr);
    EXPECT_EQ(errno, ENAMETOOLONG);
}

TEST(Listing, AnItemThatCannotBeExaminedIsTracedAndNull) {
    CapturedTrace trace;
    const TemporaryFolder folder;
    const std::string file = folder.file("file");
    struct Row {
        std::string path;
        int error;
    };
    const Row rows[] = {
        {folder.at("missing"), ENOENT},
        {"", ENOENT},
        {file + "/x", ENOTDIR},
        {folder.link("loop", "loop"), ELOOP},
        {folder.at(std::string(256, 'n')), ENAMETOOLONG},
    };
    for (const Row &row : rows) {
        EXPECT_EQ(listed(row.path), nullptr) << row.path;
        EXPECT_EQ(errno, row.error) << row.path;
        EXPECT_EQ(trace.take(), "\t\tError getting item statistics\n\t\terror : " +
                                    std::string(std::strerror(row.error)) + "\n");
    }
    EXPECT_EQ(mfs_fso_get_local_fso(nullptr), nullptr);
    trace.take();
    mfs_set_trace_stream(nullptr);
    EXPECT_EQ(mfs_fso_get_local_item(""), nullptr);
    EXPECT_EQ(trace.take(), "") << "silenced";
}

TEST(Listing, PermissionsOfAFolderLimitItsListing) {
    const TemporaryFolder folder;
    ASSERT_EQ(chmod(folder.path().c_str(), 0755), 0);
    for (const char *const name : {"unreadable", "unsearchable", "closed"}) {
        folder.folder(name);
        folder.file(std::string(name) + "/x");
    }
    ASSERT_EQ(chmod(folder.at("unreadable").c_str(), 0711), 0);
    ASSERT_EQ(chmod(folder.at("unsearchable").c_str(), 0744), 0);
    ASSERT_EQ(chmod(folder.at("closed").c_str(), 0700), 0);
    ASSERT_EQ(runAsNobody([&] {
                  errno = 0;
                  const Tree tree = listed(folder.at("unreadable"));
                  return tree && childrenOf(tree.get()).empty() && errno == EACCES ? 0 : 1;
              }),
              0)
        << "a folder that cannot be opened has no children";
    ASSERT_EQ(
        runAsNobody([&] { return !listed(folder.at("unsearchable")) && errno == EACCES ? 0 : 1; }),
        0)
        << "a single child that cannot be examined fails the listing";
    ASSERT_EQ(runAsNobody([&] {
                  const CapturedTrace quiet;
                  return !listed(folder.at("closed/x")) && errno == EACCES ? 0 : 1;
              }),
              0);
    ASSERT_EQ(chmod(folder.at("closed").c_str(), 0755), 0);
}

TEST(Listing, PathsThatBeginWithDevAreNotListed) {
    const Tree devices = listed("/dev");
    EXPECT_EQ(devices->type, MFS_TYPE_DIRECTORY);
    EXPECT_TRUE(childrenOf(devices.get()).empty());
    const Tree null = listed("/dev/null");
    EXPECT_EQ(null->type, MFS_TYPE_OTHER);
    EXPECT_FALSE(childrenOf(listed("//dev").get()).empty()) << "begins with other characters";
    const TemporaryFolder folder;
    folder.folder("devices");
    folder.file("devices/x");
    EXPECT_EQ(childrenOf(listed(folder.at("devices")).get()).size(), 1U);
    if (geteuid() != 0)
        GTEST_SKIP() << "only root can call chroot";
    EXPECT_EQ(runForked([&] {
                  return chroot(folder.path().c_str()) == 0 &&
                                 childrenOf(listed("/devices").get()).empty() &&
                                 childrenOf(listed("//devices").get()).size() == 1
                             ? 0
                             : 1;
              }),
              0)
        << "the four characters decide, not the component";
}

TEST(Listing, LeavesErrnoAndDescriptorsUnchanged) {
    const auto openDescriptors = [] {
        return std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {});
    };
    const auto before = openDescriptors();
    const TemporaryFolder folder;
    folder.link("dangling", "nowhere");
    errno = EDOM;
    EXPECT_NE(listed(folder.path()), nullptr);
    EXPECT_EQ(errno, EDOM) << "a broken link is not an error";
    EXPECT_EQ(openDescriptors(), before);
}

} // namespace
