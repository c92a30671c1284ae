// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/size/SizeWalk.h"

#include "core/posix/LongPath.h"
#include "model/size/SeenLinks.h"
#include "model/size/SizeWorker.h"
#include "platform/files/MountTable.h"
#include "platform/foundation/FileSystemText.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <csignal>
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

/// To a few milliseconds, and cheap enough to be asked after each entry.
microseconds now() {
    timespec time = {};
    clock_gettime(CLOCK_MONOTONIC_COARSE, &time);
    return std::chrono::seconds(time.tv_sec) + microseconds(time.tv_nsec / 1000);
}

/// How long this thread has been awake, with a processor or waiting for one (proc(5), schedstat).
/// Nothing where the system does not tell.
std::optional<microseconds> timeAwake() {
    std::ifstream statistics("/proc/thread-self/schedstat");
    int64_t computed = 0; // nanoseconds
    int64_t queued = 0;
    if (!(statistics >> computed >> queued))
        return std::nullopt;
    return microseconds((computed + queued) / 1000);
}

/// While it lives, threads that are started get no signals: those are for the program's own.
class SignalsBlocked {
public:
    SignalsBlocked() {
        sigset_t all;
        sigfillset(&all);
        pthread_sigmask(SIG_SETMASK, &all, &before_);
    }
    SignalsBlocked(const SignalsBlocked &) = delete;
    SignalsBlocked &operator=(const SignalsBlocked &) = delete;
    ~SignalsBlocked() { pthread_sigmask(SIG_SETMASK, &before_, nullptr); }

private:
    sigset_t before_ = {};
};

/// The threads of one measurement.
class Crew {
public:
    Crew(const SharedWalk &walk, const MXSizeProgressCallback &report)
        : walk_(walk), report_(report) {}
    Crew(const Crew &) = delete;
    Crew &operator=(const Crew &) = delete;
    ~Crew() { dismiss(); }

    void measure(FolderQueue::Task top);

    /// What all of them found.
    [[nodiscard]] MXSizeMeasurement measurement() const;

private:
    using Moment = SizeWorker::Moment;
    struct Member {
        explicit Member(const SharedWalk &walk) : worker(walk) {}
        SizeWorker worker;
        std::thread thread;         ///< the caller's own has none
        std::exception_ptr failure; ///< want of memory that ended it
    };

    void lookAfter(Moment moment);
    void hireWhatHelps(Moment moment, microseconds time);
    void hire(std::size_t count);
    void work(Member &member);
    void report() const;
    void dismiss();

    const SharedWalk &walk_;
    const MXSizeProgressCallback &report_;
    std::list<Member> members_;
    std::size_t entries_ = 0; ///< that the caller's thread measured
    microseconds lastReport_ = now();
    microseconds lastLook_ = lastReport_;
    std::optional<microseconds> lastAwake_ = timeAwake();
    bool wasIdle_ = false;
};

void Crew::measure(FolderQueue::Task top) {
    SizeWorker &worker = members_.emplace_back(walk_).worker;
    worker.setPause([this](Moment moment) { lookAfter(moment); });
    worker.run(std::move(top));
    dismiss();
    for (const Member &member : members_)
        if (member.failure)
            std::rethrow_exception(member.failure);
}

void Crew::lookAfter(Moment moment) {
    constexpr microseconds kBetweenReports = std::chrono::milliseconds(50);
    const microseconds time = now();
    entries_ += moment == Moment::EntryDone;
    wasIdle_ = wasIdle_ || moment == Moment::NothingToDo;
    hireWhatHelps(moment, time);
    if (report_ && time - lastReport_ >= kBetweenReports) {
        report();
        lastReport_ = time;
    }
}

/// Threads are started when there is enough to do for them: one for each processor, and more where
/// a slow disk leaves those idle.
void Crew::hireWhatHelps(Moment moment, microseconds time) {
    constexpr std::size_t kWorthwhile = 256;
    constexpr std::size_t kMostProcessors = 8;
    constexpr microseconds kBetweenLooks = std::chrono::milliseconds(10);
    if (moment == Moment::EntryDone && entries_ % kWorthwhile == 0 && walk_.folders.hasWaiting())
        hire(std::min<std::size_t>(std::thread::hardware_concurrency(), kMostProcessors));
    const microseconds elapsed = time - lastLook_;
    if (elapsed < kBetweenLooks)
        return;
    const auto awake = timeAwake();
    const bool sleeps = awake && lastAwake_ && (elapsed - (*awake - *lastAwake_)) * 4 > elapsed;
    if (sleeps && !wasIdle_)
        hire(members_.size() + 1);
    lastLook_ = time;
    lastAwake_ = awake;
    wasIdle_ = false;
}

/// Makes them @p count, or as many as the system gives.
void Crew::hire(std::size_t count) {
    constexpr std::size_t kMost = 16;
    const SignalsBlocked blocked;
    while (members_.size() < std::min(count, kMost)) {
        Member &member = members_.emplace_back(walk_);
        try {
            member.thread = std::thread([this, &member] { work(member); });
        } catch (const std::system_error &) {
            members_.pop_back();
            return;
        }
    }
}

/// What a thread of ours does.
void Crew::work(Member &member) {
    try {
        member.worker.run();
    } catch (...) {
        member.failure = std::current_exception();
        walk_.folders.stop();
    }
}

void Crew::report() const {
    MXSizeProgress all;
    for (const Member &member : members_) {
        const MXSizeProgress progress = member.worker.progress();
        all.entries += progress.entries;
        all.bytes += progress.bytes;
    }
    report_(all);
}

void Crew::dismiss() {
    walk_.folders.stop();
    for (Member &member : members_)
        if (member.thread.joinable())
            member.thread.join();
}

MXSizeMeasurement Crew::measurement() const {
    MXSizeMeasurement all;
    MXFSOSizeRecord &record = all.record;
    for (const Member &member : members_) {
        const MXFSOSizeRecord &sums = member.worker.sums();
        record.dataForkSize += sums.dataForkSize;
        record.physicalDataForkSize += sums.physicalDataForkSize;
        record.resourceForkSize += sums.resourceForkSize;
        record.physicalResourceForkSize += sums.physicalResourceForkSize;
        record.containedFolderCount += sums.containedFolderCount;
        record.containedFileCount += sums.containedFileCount;
        record.hiddenItemCount += sums.hiddenItemCount;
        all.unreadableCount += member.worker.unreadableCount();
        all.unreadable += member.worker.unreadable();
        all.isPartial = all.isPartial || member.worker.wasCancelled();
    }
    std::ranges::sort(all.unreadable, {}, &MXUnreadableItem::path);
    return all;
}

MXSizeMeasurement unreadableTop(const QByteArray &path, OSStatus status, bool isListed) {
    MXSizeMeasurement nothing;
    nothing.unreadableCount = 1;
    if (isListed)
        nothing.unreadable += {stringWithFileSystemRepresentation(path), status};
    return nothing;
}

} // namespace

MXSizeMeasurement measureContents(const QByteArray &path, const MXSizeOptions &options,
                                  const std::atomic<bool> &isCancelled) {
    const LongPath place(path.constData());
    constexpr int kFlags = O_RDONLY | O_DIRECTORY | O_NONBLOCK | O_CLOEXEC;
    const auto top = std::make_shared<const Descriptor>(
        place ? openat(place.folder(), place.relativePath(), kFlags) : -1);
    if (!*top) {
        const OSStatus status = statusFromErrno(errno);
        struct stat item; // perhaps a link that leads nowhere
        const bool isNoFolder =
            place &&
            fstatat(place.folder(), place.relativePath(), &item, AT_SYMLINK_NOFOLLOW) == 0 &&
            !S_ISDIR(item.st_mode);
        return isNoFolder ? MXSizeMeasurement()
                          : unreadableTop(path, status, options.listsUnreadable);
    }
    FolderQueue folders(path, top);
    SeenLinks seenLinks;
    const SharedWalk walk = {
        .folders = folders,
        .isCancelled = isCancelled,
        .seenLinks = options.countsHardLinksOnce ? &seenLinks : nullptr,
        .countsSidecarForksOnce = options.countsSidecarForksOnce,
        .mountId = options.staysOnVolume ? mountIdOf(top->number(), "") : 0,
        .listsUnreadable = options.listsUnreadable,
    };
    Crew crew(walk, options.progress);
    crew.measure(folders.first());
    return crew.measurement();
}

} // namespace MWCore
