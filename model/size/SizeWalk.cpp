// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/size/SizeWalk.h"

#include "core/posix/FolderStream.h"
#include "core/posix/LongPath.h"
#include "core/posix/SignalsBlocked.h"
#include "model/size/SizeWorker.h"
#include "model/size/VisitedLinks.h"
#include "platform/files/MountTable.h"
#include "platform/foundation/CoarseClock.h"
#include "platform/foundation/FileSystemText.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <ctime>
#include <exception>
#include <fstream>
#include <list>
#include <memory>
#include <optional>
#include <system_error>
#include <thread>

#include <fcntl.h>
#include <sys/stat.h>

namespace MWCore {
namespace {

using std::chrono::microseconds;

/// Accurate to a few milliseconds, and cheap enough to be called after each entry.
microseconds now() {
    constexpr int64_t kMicrosecond = 1000; // nanoseconds
    return microseconds(coarseTime(CLOCK_MONOTONIC_COARSE) / kMicrosecond);
}

/// How long this thread has been running or waiting for a processor (proc(5), schedstat). nullopt
/// if the system does not report it.
std::optional<microseconds> timeAwake() {
    std::ifstream statistics("/proc/thread-self/schedstat");
    int64_t computed = 0; // nanoseconds
    int64_t queued = 0;
    if (!(statistics >> computed >> queued))
        return std::nullopt;
    return microseconds((computed + queued) / 1000);
}

/// The threads of one measurement. The first worker runs on the calling thread.
class WorkerPool {
public:
    WorkerPool(const SharedWalk &walk, const MXSizeProgressCallback &progress)
        : walk_(walk), progress_(progress) {}
    WorkerPool(const WorkerPool &) = delete;
    WorkerPool &operator=(const WorkerPool &) = delete;
    ~WorkerPool() { join(); }

    void measure(FolderQueue::Task top);

    /// The sums of all workers.
    [[nodiscard]] MXSizeMeasurement measurement() const;

private:
    using Event = SizeWorker::Event;
    struct Member {
        explicit Member(const SharedWalk &walk) : worker(walk) {}
        SizeWorker worker;
        std::thread thread;         ///< none for the first worker
        std::exception_ptr failure; ///< bad_alloc that ended the thread
    };

    void handle(Event event);
    void startUsefulWorkers(Event event, microseconds time);
    void startWorkers(std::size_t count);
    void run(Member &member);
    void report() const;
    void join();

    const SharedWalk &walk_;
    const MXSizeProgressCallback &progress_;
    std::list<Member> members_;
    std::size_t entries_ = 0; ///< measured by the calling thread
    microseconds lastReport_ = now();
    microseconds lastCheck_ = lastReport_;
    std::optional<microseconds> lastAwake_ = timeAwake();
    bool wasIdle_ = false;
};

void WorkerPool::measure(FolderQueue::Task top) {
    SizeWorker &worker = members_.emplace_back(walk_).worker;
    worker.setObserver([this](Event event) { handle(event); });
    worker.run(std::move(top));
    join();
    for (const Member &member : members_)
        if (member.failure)
            std::rethrow_exception(member.failure);
}

void WorkerPool::handle(Event event) {
    constexpr microseconds kBetweenReports = std::chrono::milliseconds(50);
    const microseconds time = now();
    entries_ += event == Event::EntryMeasured;
    wasIdle_ = wasIdle_ || event == Event::Idle;
    startUsefulWorkers(event, time);
    if (progress_ && time - lastReport_ >= kBetweenReports) {
        report();
        lastReport_ = time;
    }
}

/// If there is enough work, starts one thread per processor; if a slow disk leaves those idle,
/// starts more.
void WorkerPool::startUsefulWorkers(Event event, microseconds time) {
    constexpr std::size_t kWorthwhile = 256;
    constexpr std::size_t kMostProcessors = 8;
    constexpr microseconds kBetweenChecks = std::chrono::milliseconds(10);
    if (event == Event::EntryMeasured && entries_ % kWorthwhile == 0 && walk_.folders.hasWaiting())
        startWorkers(std::min<std::size_t>(std::thread::hardware_concurrency(), kMostProcessors));
    const microseconds elapsed = time - lastCheck_;
    if (elapsed < kBetweenChecks)
        return;
    const auto awake = timeAwake();
    const bool sleeps = awake && lastAwake_ && (elapsed - (*awake - *lastAwake_)) * 4 > elapsed;
    if (sleeps && !wasIdle_)
        startWorkers(members_.size() + 1);
    lastCheck_ = time;
    lastAwake_ = awake;
    wasIdle_ = false;
}

/// Starts threads until there are @p count workers or the system refuses.
void WorkerPool::startWorkers(std::size_t count) {
    constexpr std::size_t kMost = 16;
    const SignalsBlocked blocked;
    while (members_.size() < std::min(count, kMost)) {
        Member &member = members_.emplace_back(walk_);
        try {
            member.thread = std::thread([this, &member] { run(member); });
        } catch (const std::system_error &) {
            members_.pop_back();
            return;
        }
    }
}

void WorkerPool::run(Member &member) {
    try {
        member.worker.run();
    } catch (...) {
        member.failure = std::current_exception();
        walk_.folders.stop();
    }
}

void WorkerPool::report() const {
    MXSizeProgress all;
    for (const Member &member : members_) {
        const MXSizeProgress progress = member.worker.progress();
        all.entries += progress.entries;
        all.bytes += progress.bytes;
    }
    progress_(all);
}

/// Stops the walk and waits for all threads.
void WorkerPool::join() {
    walk_.folders.stop();
    for (Member &member : members_)
        if (member.thread.joinable())
            member.thread.join();
}

MXSizeMeasurement WorkerPool::measurement() const {
    MXSizeMeasurement all;
    for (const Member &member : members_) {
        all.record += member.worker.sums();
        all.unreadableCount += member.worker.unreadableCount();
        all.unreadable += member.worker.unreadable();
        all.isPartial = all.isPartial || member.worker.wasCancelled();
    }
    std::ranges::sort(all.unreadable, {}, &MXUnreadableItem::path);
    return all;
}

MXSizeMeasurement unreadableTop(const QByteArray &path, OSStatus status, bool isListed) {
    MXSizeMeasurement empty;
    empty.unreadableCount = 1;
    if (isListed)
        empty.unreadable += {stringWithFileSystemRepresentation(path), status};
    return empty;
}

} // namespace

MXSizeMeasurement measureContents(const QByteArray &path, const MXSizeOptions &options,
                                  const std::atomic<bool> &isCancelled) {
    const LongPath place(path.constData());
    const auto top = std::make_shared<const Descriptor>(
        place ? openat(place.folder(), place.relativePath(), kReadFolder) : -1);
    if (!*top) {
        const OSStatus status = statusFromErrno(errno);
        struct stat item; // may be a broken link
        const bool isNoFolder =
            place &&
            fstatat(place.folder(), place.relativePath(), &item, AT_SYMLINK_NOFOLLOW) == 0 &&
            !S_ISDIR(item.st_mode);
        return isNoFolder ? MXSizeMeasurement()
                          : unreadableTop(path, status, options.listsUnreadable);
    }
    FolderQueue folders(path, top);
    VisitedLinks visitedLinks;
    const SharedWalk walk = {
        .folders = folders,
        .isCancelled = isCancelled,
        .visitedLinks = options.countsHardLinksOnce ? &visitedLinks : nullptr,
        .countsSidecarForksOnce = options.countsSidecarForksOnce,
        .mountId = options.staysOnVolume ? mountIdOf(top->number(), "") : 0,
        .listsUnreadable = options.listsUnreadable,
    };
    WorkerPool workers(walk, options.progress);
    workers.measure(folders.first());
    return workers.measurement();
}

} // namespace MWCore
