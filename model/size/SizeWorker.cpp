// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/size/SizeWorker.h"

#include "core/mfs_fso.h"
#include "core/posix/errors.h"
#include "core/posix/FolderStream.h"
#include "core/posix/LongPath.h"
#include "core/posix/stat_fields.h"
#include "core/record_tree.h"
#include "model/size/VisitedLinks.h"
#include "platform/files/DescriptorPath.h"
#include "platform/files/MountTable.h"
#include "platform/foundation/FileSystemText.h"
#include "platform/foundation/Log.h"
#include "platform/metadata/Sidecar.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <thread>
#include <utility>

#include <QScopeGuard>

#include <fcntl.h>
#include <linux/openat2.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace MWCore {
namespace {

/// As openat(2), for a folder, but follows no link in the path. If the system or a sandbox does not
/// allow openat2(2), only a link at the end is not followed.
int openUnlinked(int start, const char *path, int flags, ...) {
    open_how how = {};
    how.flags = static_cast<unsigned>(flags | O_NOFOLLOW);
    how.resolve = RESOLVE_NO_SYMLINKS;
    const auto folder = static_cast<int>(syscall(SYS_openat2, start, path, &how, sizeof how));
    if (folder < 0 && errno == ELOOP)
        errno = ENOTDIR; // as for a link at the end: the folder is gone
    if (folder >= 0 || (errno != ENOSYS && errno != EPERM))
        return folder;
    return openat(start, path, flags | O_NOFOLLOW);
}

} // namespace

/// Metadata of an entry.
struct SizeWorker::Metadata {
    bool isInvisible = false;
    ForkSize fork;
    OSStatus forkStatus = noErr;
};

void SizeWorker::run(Task task) {
    const auto drop = qScopeGuard([this, &task] { walk_.folders.drop(task); }); // on an exception
    if (task.folder)
        measure(task);
    for (;;) {
        switch (walk_.folders.next(task)) {
        case FolderQueue::Next::Task:
            if (!isCancelled())
                measure(task);
            break;
        case FolderQueue::Next::Waited:
            if (observer_)
                observer_(Event::Idle);
            break;
        case FolderQueue::Next::End:
            return;
        }
    }
}

bool SizeWorker::isCancelled() {
    if (!walk_.isCancelled.load(std::memory_order_relaxed))
        return false;
    wasCancelled_ = true;
    walk_.folders.stop();
    return true;
}

void SizeWorker::measure(Task &task) {
    if (!task.opened && !open(task))
        return;
    setFolderPath(task);
    const int folder = task.opened->number();
    auto outcome = task.isShared ? block_.fill(folder) : readFirstBlock(task);
    for (;;) {
        if (outcome == FolderBlock::Outcome::Failed)
            addUnreadable(task, nullptr, block_.status());
        if (!measureBlock(task, outcome))
            return;
        outcome = block_.fill(folder);
    }
}

/// Measures a block that was read with @p outcome. Returns whether the task must read another one.
bool SizeWorker::measureBlock(Task &task, FolderBlock::Outcome outcome) {
    bool leavesMore = outcome == FolderBlock::Outcome::MoreLeft;
    bool isShared = false;
    for (const dirent64 &entry : block_) {
        measureEntry(task, entry.d_name);
        if (observer_)
            observer_(Event::EntryMeasured);
        if (isCancelled())
            return false;
        if (std::exchange(leavesMore, false))
            isShared = walk_.folders.share(task);
    }
    return outcome == FolderBlock::Outcome::MoreLeft && !isShared;
}

/// Opens the task's folder, unless it or a folder above it has been replaced by a link. If
/// descriptors run out, waits for some, but not forever.
bool SizeWorker::open(Task &task) {
    int error = 0;
    do {
        const LongPath place(task.pathFromBase.constData(), task.base->number(), openUnlinked);
        Descriptor folder(place ? openUnlinked(place.folder(), place.relativePath(), kReadFolder)
                                : -1);
        if (folder) {
            task.opened = std::make_shared<const Descriptor>(std::move(folder));
            attemptsToOpen_ = kMostAttempts;
            return true;
        }
        error = errno;
    } while (isExhaustion(error) && waitForDescriptors(attemptsToOpen_));
    addUnreadable(task, nullptr, statusFromErrno(error));
    return false;
}

/// Waits briefly for descriptors. False if there were too many attempts or the walk is cancelled.
bool SizeWorker::waitForDescriptors(int &attemptsLeft) {
    constexpr std::chrono::milliseconds kBetweenAttempts(1);
    if (attemptsLeft == 0 || isCancelled())
        return false;
    --attemptsLeft;
    walk_.folders.closeWaiting(); // other threads will soon close theirs, too
    std::this_thread::sleep_for(kBetweenAttempts);
    return true;
}

/// Also finds out whether the folder has sidecars. They may follow their items, so the names in a
/// large folder are read twice.
FolderBlock::Outcome SizeWorker::readFirstBlock(const Task &task) {
    const int folder = task.opened->number();
    auto outcome = block_.fill(folder);
    bool hasSidecars = blockNamesSidecar();
    if (outcome == FolderBlock::Outcome::MoreLeft && !hasSidecars) {
        while (outcome == FolderBlock::Outcome::MoreLeft && !hasSidecars) {
            outcome = block_.fill(folder);
            // If cancelled, assume sidecars: that costs only a little time.
            hasSidecars = blockNamesSidecar() || walk_.isCancelled.load(std::memory_order_relaxed);
        }
        outcome = block_.fillFromStart(folder);
    }
    task.folder->hasSidecars = hasSidecars;
    return outcome;
}

bool SizeWorker::blockNamesSidecar() const {
    return std::any_of(block_.begin(), block_.end(),
                       [](const dirent64 &entry) { return isSidecarName(entry.d_name); });
}

void SizeWorker::measureEntry(Task &task, const char *name) {
    struct stat item;
    if (fstatat(task.opened->number(), name, &item, AT_SYMLINK_NOFOLLOW) != 0) {
        ++sums_.containedFileCount;
        addUnreadable(task, name, statusFromErrno(errno));
    } else if (S_ISDIR(item.st_mode)) {
        ++sums_.containedFolderCount;
        measureFolder(task, name, item);
    } else {
        ++sums_.containedFileCount;
        S_ISLNK(item.st_mode) ? measureLink(task, name, item) : measureFile(task, name, item);
    }
    entries_.store(sums_.containedFileCount + sums_.containedFolderCount,
                   std::memory_order_relaxed);
    bytes_.store(sums_.dataForkSize + sums_.resourceForkSize, std::memory_order_relaxed);
}

void SizeWorker::measureFolder(Task &task, const char *name, const struct stat &folder) {
    sums_.hiddenItemCount += metadataOf(task, name, folder).isInvisible && hasObject(task, name);
    if (walk_.mountId == 0 || mountIdOf(task.opened->number(), name) == walk_.mountId)
        task.subfolders.append(name, static_cast<qsizetype>(std::strlen(name)) + 1);
}

void SizeWorker::measureFile(const Task &task, const char *name, const struct stat &file) {
    const Metadata metadata = metadataOf(task, name, file);
    sums_.hiddenItemCount += metadata.isInvisible;
    if (metadata.forkStatus != noErr) {
        qCWarning(mwcoreLog, "getLocalFileSize : Error Getting info");
        addUnreadable(task, name, metadata.forkStatus);
        return;
    }
    if (walk_.visitedLinks && !walk_.visitedLinks->isFirstVisit(file))
        return;
    MXFSOSizeRecord own;
    own.dataForkSize = static_cast<uint64_t>(file.st_size);
    own.physicalDataForkSize = lengthOfBlocks(static_cast<uint64_t>(file.st_blocks));
    own.resourceForkSize = static_cast<uint64_t>(metadata.fork.logical);
    own.physicalResourceForkSize = static_cast<uint64_t>(metadata.fork.physical);
    if (walk_.countsSidecarForksOnce && task.folder->hasSidecars)
        countForkWithSidecar(task, name, &own);
    sums_ += own;
}

/// Counts a fork in a sidecar with the sidecar's file and not with the item: the blocks belong to
/// that file, which may have several names even if the item has one.
void SizeWorker::countForkWithSidecar(const Task &task, const char *name, MXFSOSizeRecord *own) {
    if (own->resourceForkSize > 0 && forkInSidecar(task, name).logical > 0)
        own->resourceForkSize = own->physicalResourceForkSize = 0;
    if (!isSidecarName(name))
        return;
    const ForkSize fork = forkInSidecar(task, name + kSidecarPrefix.size());
    if (fork.logical == 0)
        return;
    const uint64_t length = std::min(static_cast<uint64_t>(fork.logical), own->dataForkSize);
    own->dataForkSize -= length;
    own->resourceForkSize += length;
    own->physicalResourceForkSize += std::exchange(own->physicalDataForkSize, 0);
}

/// The entry's fork in a sidecar as measureFile() counts it. Length 0 if there is none, if the fork
/// is in an attribute, or if the entry's forks are not measured.
ForkSize SizeWorker::forkInSidecar(const Task &task, const char *name) {
    struct stat item;
    ForkSize fork;
    ForkSize inAttribute;
    const QByteArray &path = pathOfEntry(name);
    const bool isMeasured =
        fstatat(task.opened->number(), name, &item, AT_SYMLINK_NOFOLLOW) == 0 &&
        !S_ISDIR(item.st_mode) && !S_ISLNK(item.st_mode) &&
        readMetadata(resourceForkSize, path, &fork, Sidecars::MayExist) == noErr &&
        readMetadata(resourceForkSize, path, &inAttribute, Sidecars::Absent) == noErr;
    return isMeasured && inAttribute.logical == 0 ? fork : ForkSize();
}

void SizeWorker::measureLink(const Task &task, const char *name, const struct stat &link) {
    if (!hasObject(task, name))
        return;
    sums_.hiddenItemCount += metadataOf(task, name, link).isInvisible;
    if (walk_.visitedLinks && !walk_.visitedLinks->isFirstVisit(link))
        return;
    sums_.dataForkSize += static_cast<uint64_t>(link.st_size);
}

/// Whether an object could be made of an entry: the item or, for a link, its target can be examined
/// and, if it is a folder, all its children as well.
bool SizeWorker::hasObject(const Task &task, const char *name) {
    struct stat target;
    const int folder = task.opened->number();
    if (fstatat(folder, name, &target, 0) != 0)
        return false;
    if (!S_ISDIR(target.st_mode) || faccessat(folder, name, X_OK, AT_EACCESS) == 0)
        return true;
    return RecordTree(mfs_fso_get_local_fso(pathOfEntry(name).constData())) != nullptr;
}

/// If descriptors run out, waits as open() does.
template <typename Read, typename Result>
OSStatus SizeWorker::readMetadata(Read read, const QByteArray &path, Result *result,
                                  Sidecars sidecars) {
    OSStatus status = noErr;
    do
        status = read(path, result, sidecars);
    while (status == tmfoErr && waitForDescriptors(attemptsToRead_));
    if (status != tmfoErr)
        attemptsToRead_ = kMostAttempts;
    return status;
}

SizeWorker::Metadata SizeWorker::metadataOf(const Task &task, const char *name,
                                            const struct stat &item) {
    const QByteArray &path = pathOfEntry(name);
    const auto sidecars = task.folder->hasSidecars ? Sidecars::MayExist : Sidecars::Absent;
    if (sidecars == Sidecars::Absent &&
        !(isFileOrFolder(item.st_mode) &&
          mayHaveMetadataAttributes(task.opened->number(), name, path)))
        return {};
    Metadata metadata;
    FinderInfo info;
    metadata.isInvisible =
        readMetadata(readFinderInfo, path, &info, sidecars) == noErr && (info.flags & kIsInvisible);
    if (!S_ISDIR(item.st_mode) && !S_ISLNK(item.st_mode))
        metadata.forkStatus = readMetadata(resourceForkSize, path, &metadata.fork, sidecars);
    return metadata;
}

/// Uses the folder's own path, unless an entry's path could become too long for system calls.
void SizeWorker::setFolderPath(const Task &task) {
    constexpr qsizetype kLongestEntry = sizeof "/._" + NAME_MAX;
    path_ = isPathLonger(*task.folder, PATH_MAX - kLongestEntry)
                ? pathOfDescriptor(task.opened->number())
                : pathOf(*task.folder);
    if (!path_.endsWith('/'))
        path_ += '/';
    nameStart_ = path_.size();
}

const QByteArray &SizeWorker::pathOfEntry(const char *name) {
    path_.truncate(nameStart_);
    path_ += name;
    return path_;
}

/// Records an entry or, if @p name is null, the folder itself; ignores an item that is gone.
void SizeWorker::addUnreadable(const Task &task, const char *name, OSStatus status) {
    if (status == fnfErr)
        return;
    ++unreadableCount_;
    if (!walk_.listsUnreadable)
        return;
    QByteArray path = pathOf(*task.folder);
    if (name)
        path += (path.endsWith('/') ? "" : "/") + QByteArray(name);
    unreadable_ += {stringWithFileSystemRepresentation(path), status};
}

} // namespace MWCore
