// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// Measures how long aliases take to find a renamed or moved file, as root and without privileges,
// and how long a listing takes for items that are designed to slow it down.
// usage: bench_alias [SIBLINGS [FILES_IN_THE_HOME]]
#include "benchmarks/support/benchmark.h"
#include "benchmarks/support/check.h"
#include "benchmarks/support/files.h"
#include "benchmarks/support/processes.h"
#include "benchmarks/support/TemporaryFolder.h"
#include "benchmarks/support/turns.h"
#include "model/item/MXFileSystemObject.h"
#include "platform/aliases/Aliases.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <stdexcept>
#include <string>
#include <system_error>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace fs = std::filesystem;
using namespace MWCore;

/// Drops root's rights, if there are any, during its lifetime; the kernel then opens no handles.
class Unprivileged {
public:
    Unprivileged() { setUser(65534); }
    Unprivileged(const Unprivileged &) = delete;
    Unprivileged &operator=(const Unprivileged &) = delete;
    ~Unprivileged() { setUser(0); }

private:
    static void setUser(uid_t user) {
        if (getuid() == 0 && seteuid(user) != 0)
            std::abort();
    }
};

QByteArray aliasOf(const fs::path &path) {
    FSRef target;
    QByteArray alias;
    require(FSPathMakeRef(path.c_str(), &target) == noErr && FSNewAlias(target, &alias) == noErr,
            "no alias");
    return alias;
}

void resolve(const QByteArray &alias, const fs::path &expected) {
    FSRef target;
    if (FSResolveAlias(alias, &target) != noErr || target.path != expected.c_str())
        throw std::runtime_error("the alias leads to " + target.path.toStdString());
}

void readAndStat(const fs::path &folder) {
    DIR *const opened = opendir(folder.c_str());
    while (const dirent *const entry = readdir(opened)) {
        struct stat item;
        (void)fstatat(dirfd(opened), entry->d_name, &item, AT_SYMLINK_NOFOLLOW);
    }
    closedir(opened);
}

void findByInode(const fs::path &folder, ino_t inode) {
    processes::runSilently(
        {"find", folder, "-xdev", "-inum", std::to_string(inode), "-print", "-quit"});
}

void compareRename(const fs::path &home, long siblings) {
    const fs::path folder = home / "siblings";
    makeFiles(folder, siblings);
    std::ofstream(folder / "item");
    const QByteArray alias = aliasOf(folder / "item");
    fs::rename(folder / "item", folder / "renamed");
    constexpr int kRounds = 31;
    turns::printTable("renamed in its folder",
                      {{"alias, without privileges",
                        [&] {
                            const Unprivileged unprivileged;
                            resolve(alias, folder / "renamed");
                        }},
                       {"readdir and fstatat of the folder", [&] { readAndStat(folder); }},
                       {"alias, as root", [&] { resolve(alias, folder / "renamed"); }}},
                      kRounds);
}

void compareMove(const fs::path &home, long files) {
    constexpr long kFilesPerFolder = 20;
    for (long index = 0; index < files / kFilesPerFolder; ++index)
        makeFiles(home / "tree" / std::to_string(index % 100) / std::to_string(index),
                  kFilesPerFolder);
    const fs::path item = home / "item";
    // Both contenders get there late, in whatever order they search.
    const fs::path far = home / "tree/99/" / std::to_string(files / kFilesPerFolder - 1) / "moved";
    std::ofstream{item};
    const QByteArray alias = aliasOf(item);
    fs::rename(item, far);
    struct stat moved = {};
    stat(far.c_str(), &moved);
    constexpr int kRounds = 9;
    turns::printTable("moved within the home folder",
                      {{"alias, without privileges",
                        [&] {
                            const Unprivileged unprivileged;
                            resolve(alias, far);
                        }},
                       {"find -inum", [&] { findByInode(home, moved.st_ino); }},
                       {"alias, as root", [&] { resolve(alias, far); }}},
                      kRounds);
    fs::remove(far);
    turns::printTable("deleted: the whole home folder is searched",
                      {{"alias, without privileges",
                        [&] {
                            const Unprivileged unprivileged;
                            FSRef target;
                            require(FSResolveAlias(alias, &target) == fnfErr,
                                    "a deleted file was found");
                        }},
                       {"find -inum", [&] { findByInode(home, moved.st_ino); }}},
                      kRounds);
}

/// Makes hard links to a file with @p content, and a new file whenever one can have no more links.
fs::path makeEntries(const fs::path &folder, long count, const std::string &content) {
    fs::create_directories(folder);
    fs::path source;
    for (long index = 0; index < count; ++index) {
        const fs::path name = folder / (std::to_string(index) + ".desktop");
        std::error_code failed = std::make_error_code(std::errc::too_many_links);
        if (!source.empty())
            fs::create_hard_link(source, name, failed);
        if (failed)
            std::ofstream(source = name) << content;
    }
    return folder;
}

/// Makes aliases that each lead to the next one, in a circle.
fs::path makeChains(const fs::path &folder, long count) {
    fs::create_directories(folder);
    for (long index = 0; index < count; ++index)
        std::ofstream(folder / (std::to_string(index) + ".desktop"))
            << "[Desktop Entry]\nType=Link\nURL=file://"
            << (folder / (std::to_string((index + 1) % count) + ".desktop")).string() << '\n';
    return folder;
}

void compareListings(const fs::path &home, long files) {
    constexpr std::size_t kLongest = 65'536;
    makeFiles(home / "plain", files);
    const fs::path entries = makeEntries(home / "entries", files, std::string(kLongest, '\n'));
    const fs::path ordinary =
        makeEntries(home / "ordinary", files / 10, "[Desktop Entry]\nType=Application\nExec=x\n");
    const fs::path chains = makeChains(home / "chains", files);
    const auto list = [](const fs::path &folder) {
        return [folder] {
            const QString path = QString::fromStdString(folder.string());
            require(MXFileSystemObject::newFSOForLocalPath(path) != nullptr, "not listed");
        };
    };
    constexpr int kRounds = 9;
    turns::printTable("folders listed",
                      {{"plain files", list(home / "plain")},
                       {"desktop entries of 64 KB", list(entries)},
                       {"aliases in a circle", list(chains)},
                       {"ordinary desktop entries, a tenth as many", list(ordinary)}},
                      kRounds);
}

} // namespace

int main(int argumentCount, char **arguments) {
    return runBenchmark("bench_alias", [&] {
        const long siblings = argumentCount > 1 ? std::strtol(arguments[1], nullptr, 10) : 10'000;
        const long files = argumentCount > 2 ? std::strtol(arguments[2], nullptr, 10) : 200'000;
        const TemporaryFolder home;
        fs::permissions(home.path(), fs::perms::all);
        setenv("HOME", home.path().c_str(), 1);
        compareRename(home.path(), siblings);
        compareMove(home.path(), files);
        compareListings(home.path(), files / 10);
    });
}
