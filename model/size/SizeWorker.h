// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "model/size/FolderQueue.h"
#include "model/size/MXSizeMeasurement.h"
#include "platform/files/FolderBlock.h"
#include "platform/metadata/MetadataStore.h"

#include <atomic>
#include <functional>

#include <QByteArray>
#include <QList>

#include <sys/stat.h>

namespace MWCore {

class VisitedLinks;

/// What all threads of a measurement share. Owns none of what it refers to.
struct SharedWalk {
    FolderQueue &folders;
    const std::atomic<bool> &isCancelled;
    VisitedLinks *visitedLinks = nullptr; ///< null: every name of a file counts
    bool countsSidecarForksOnce = false;  ///< with the sidecar, not also with the item
    uint64_t mountId = 0;                 ///< of the only mount that is entered; 0: any
    bool listsUnreadable = false;
};

/// The part of a measurement that runs on one thread: measures folder after folder.
class SizeWorker {
public:
    explicit SizeWorker(const SharedWalk &walk) : walk_(walk) {}
    SizeWorker(const SizeWorker &) = delete;
    SizeWorker &operator=(const SizeWorker &) = delete;
    ~SizeWorker() = default;

    enum class Event { EntryMeasured, Idle };

    /// @p observer is called after each entry, and repeatedly while there is no task.
    void setObserver(std::function<void(Event)> observer) { observer_ = std::move(observer); }

    /// Measures @p task, if there is one, and then tasks of the queue until everything is measured
    /// or the walk is cancelled. An entry of @p task is measured in any case.
    void run(FolderQueue::Task task = {});

    // Call these after the thread has ended. sums() has forks, folders, files and hidden items.
    [[nodiscard]] const MXFSOSizeRecord &sums() const { return sums_; }
    [[nodiscard]] bool wasCancelled() const { return wasCancelled_; }
    [[nodiscard]] uint64_t unreadableCount() const { return unreadableCount_; }
    [[nodiscard]] const QList<MXUnreadableItem> &unreadable() const { return unreadable_; }

    /// Any thread, at any time.
    [[nodiscard]] MXSizeProgress progress() const {
        return {entries_.load(std::memory_order_relaxed), bytes_.load(std::memory_order_relaxed)};
    }

private:
    using Task = FolderQueue::Task;
    struct Metadata;

    void measure(Task &task);
    [[nodiscard]] bool open(Task &task);
    [[nodiscard]] bool waitForDescriptors(int &attemptsLeft);
    [[nodiscard]] FolderBlock::Outcome readFirstBlock(const Task &task);
    [[nodiscard]] bool blockNamesSidecar() const;
    [[nodiscard]] bool measureBlock(Task &task, FolderBlock::Outcome outcome);
    void measureEntry(Task &task, const char *name);
    void measureFolder(Task &task, const char *name, const struct stat &folder);
    void measureFile(const Task &task, const char *name, const struct stat &file);
    void measureLink(const Task &task, const char *name, const struct stat &link);
    [[nodiscard]] bool hasObject(const Task &task, const char *name);
    void countForkWithSidecar(const Task &task, const char *name, MXFSOSizeRecord *own);
    [[nodiscard]] ForkSize forkInSidecar(const Task &task, const char *name);
    template <typename Read, typename Result>
    [[nodiscard]] OSStatus readMetadata(Read read, const QByteArray &path, Result *result,
                                        Sidecars sidecars);
    [[nodiscard]] Metadata metadataOf(const Task &task, const char *name, const struct stat &item);
    [[nodiscard]] bool isCancelled();
    void setFolderPath(const Task &task);
    [[nodiscard]] const QByteArray &pathOfEntry(const char *name);
    void addUnreadable(const Task &task, const char *name, OSStatus status);

    const SharedWalk &walk_;
    std::function<void(Event)> observer_;
    FolderBlock block_;
    QByteArray path_;         ///< of an entry; short enough for every system call
    qsizetype nameStart_ = 0; ///< index of the entry's name in `path_`

    MXFSOSizeRecord sums_;
    uint64_t unreadableCount_ = 0;
    QList<MXUnreadableItem> unreadable_;
    bool wasCancelled_ = false;
    // Attempts left while descriptors are exhausted; reset after a success.
    static constexpr int kMostAttempts = 1000;
    int attemptsToOpen_ = kMostAttempts; ///< a folder
    int attemptsToRead_ = kMostAttempts; ///< metadata
    std::atomic<uint64_t> entries_ = 0;  ///< copied from the sums for other threads
    std::atomic<uint64_t> bytes_ = 0;
};

} // namespace MWCore
