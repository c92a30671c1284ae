// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "core/LinkTargets.h"
#include "core/mfs_fso.h"
#include "core/posix/device_paths.h"
#include "core/posix/errors.h"
#include "core/posix/FinalLink.h"
#include "core/posix/FolderStream.h"
#include "core/posix/LongPath.h"
#include "core/StatConverter.h"
#include "core/text_views.h"
#include "core/trace.h"

#include <cstring>

#include <fcntl.h>

using MWCore::Descriptor;
using MWCore::FinalLink;
using MWCore::FolderStream;
using MWCore::kReadFolder;
using MWCore::LinkTargets;
using MWCore::LongPath;
using MWCore::RecordTree;
using MWCore::StatConverter;
using MWCore::Text;
using MWCore::trace;

namespace {

/// How often a listing starts over because an entry vanished before it was examined.
constexpr int kRestarts = 8;

/// Returns null and sets `errno` if the folder cannot be opened.
FolderStream openFolder(const LongPath &place) {
    Descriptor descriptor(openat(place.folder(), place.relativePath(), kReadFolder));
    FolderStream folder(descriptor ? fdopendir(descriptor.number()) : nullptr);
    if (folder)
        descriptor.release();
    return folder;
}

/// Examines the item at @p place. On failure writes trace lines, sets `errno` and returns false.
bool examine(const LongPath &place, FinalLink finalLink, struct stat &item) {
    const int flags = finalLink == FinalLink::Follow ? 0 : AT_SYMLINK_NOFOLLOW;
    if (place && fstatat(place.folder(), place.relativePath(), &item, flags) == 0)
        return true;
    trace("\t\tError getting item statistics\n");
    trace("\t\terror : %s\n", std::strerror(errno));
    return false;
}

/// Examines the target if @p item, which is @p name in @p folder, is a link; false if there is
/// none.
bool examineTarget(int folder, const char *name, const struct stat &item, struct stat &target) {
    return S_ISLNK(item.st_mode) && fstatat(folder, name, &target, 0) == 0;
}

enum class Outcome {
    Done,
    NotOpened, ///< the folder could not be opened; `errno` holds the cause
    Vanished,  ///< an entry vanished before it was examined
    Failed,    ///< `errno` holds the cause
};

/// The parent path of the entries in the folder at @p path: without a trailing "/", except for "/".
std::string_view parentOfEntries(std::string_view path) {
    return path.ends_with('/') ? MWCore::containingFolder(path) : path;
}

/// What a listing calls for each child, unless `visit` is null.
struct Visitor {
    mfs_fso_visitor visit = nullptr;
    void *context = nullptr;
};

/// One pass over an open folder that turns its entries into children of a record.
class Listing {
public:
    Listing(mfs_fso *folder, const char *path, DIR *entries, StatConverter &converter,
            Visitor visitor)
        : folder_(folder), entries_(entries), converter_(converter), visitor_(visitor),
          links_(dirfd(entries), path), parentPath_(parentOfEntries(path)) {}

    Outcome run();

private:
    Outcome add(const char *name);
    RecordTree describe(const char *name, const struct stat &item);

    mfs_fso *folder_;
    DIR *entries_;
    StatConverter &converter_;
    Visitor visitor_;
    LinkTargets links_;
    std::string_view parentPath_;
    int32_t count_ = 0;
};

Outcome Listing::run() {
    for (;;) {
        errno = 0;
        const dirent *const entry = readdir(entries_);
        if (!entry)
            return errno == 0 ? Outcome::Done : Outcome::Failed;
        const std::string_view name = entry->d_name;
        if (name == "." || name == "..")
            continue;
        const Outcome outcome = add(entry->d_name);
        if (outcome != Outcome::Done)
            return outcome;
    }
}

Outcome Listing::add(const char *name) {
    const int folder = dirfd(entries_);
    struct stat item;
    if (fstatat(folder, name, &item, AT_SYMLINK_NOFOLLOW) != 0 &&
        fstatat(folder, name, &item, 0) != 0)
        return errno == ENOENT || errno == ESTALE ? Outcome::Vanished : Outcome::Failed;
    RecordTree child = describe(name, item);
    if (!child || mfs_fso_add_subitem(folder_, child.get()) != 0)
        return Outcome::Failed;
    const mfs_fso *const added = child.release(); // now owned by the folder
    if (visitor_.visit)
        visitor_.visit(visitor_.context, added, &item, count_++);
    return Outcome::Done;
}

/// Returns null and sets `errno` if memory or descriptors run out.
RecordTree Listing::describe(const char *name, const struct stat &item) {
    struct stat target;
    const bool hasTarget = examineTarget(dirfd(entries_), name, item, target);
    Text linkTarget;
    if (hasTarget) {
        linkTarget = links_.resolve(name);
        if (!linkTarget && MWCore::isExhaustion(errno))
            return nullptr;
    }
    return converter_.convert(item, hasTarget ? &target : nullptr,
                              {parentPath_, name, std::move(linkTarget)});
}

/// One attempt at a listing; null if an entry vanished or something failed.
RecordTree listOnce(const char *path, Visitor visitor, Outcome &outcome) {
    outcome = Outcome::Failed;
    const LongPath place(path);
    struct stat item;
    if (!examine(place, FinalLink::Follow, item))
        return nullptr;
    StatConverter converter;
    RecordTree record = MWCore::_stat_to_fso(&item, nullptr, path, converter);
    if (!record)
        return nullptr;
    outcome = Outcome::Done;
    if (!mfs_fso_isDir(record.get()) || MWCore::isDevicePath(path))
        return record;
    const FolderStream entries = openFolder(place);
    outcome = entries ? Listing(record.get(), path, entries.get(), converter, visitor).run()
                      : Outcome::NotOpened;
    if (outcome == Outcome::Vanished || outcome == Outcome::Failed)
        return nullptr;
    return record;
}

} // namespace

mfs_fso *mfs_fso_get_local_fso(const char *path) {
    return mfs_fso_get_local_fso_visiting(path, nullptr, nullptr);
}

mfs_fso *mfs_fso_get_local_fso_visiting(const char *path, mfs_fso_visitor visitor, void *context) {
    const int errorBefore = errno;
    Outcome outcome = Outcome::Vanished;
    RecordTree record;
    for (int attempt = 0; attempt <= kRestarts && outcome == Outcome::Vanished; ++attempt)
        record = listOnce(path, {visitor, context}, outcome);
    if (outcome == Outcome::Done)
        errno = errorBefore;
    else if (outcome == Outcome::Vanished)
        errno = EAGAIN; // an entry's ENOENT would say that the folder does not exist
    return record.release();
}

mfs_fso *mfs_fso_get_local_item(const char *path) {
    const int errorBefore = errno;
    const LongPath place(path);
    struct stat item;
    if (!examine(place, FinalLink::Keep, item))
        return nullptr;
    struct stat target;
    const bool hasTarget = examineTarget(place.folder(), place.relativePath(), item, target);
    StatConverter converter;
    RecordTree record = MWCore::_stat_to_fso(&item, hasTarget ? &target : nullptr, path, converter);
    if (record)
        errno = errorBefore;
    return record.release();
}
