// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "core/posix/Descriptor.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <vector>

#include <QByteArray>

namespace MWCore {

using OpenFolder = std::shared_ptr<const Descriptor>;

/// A folder of a tree that is walked, known by its name and the folders above it: the depth of a
/// tree then costs neither descriptors nor long paths.
struct WalkedFolder {
    WalkedFolder *parent = nullptr; ///< null for the top
    QByteArray name;                ///< of the top its path
    bool hasSidecars = false;       ///< whether names in it begin with "._"; known when it is read

private:
    friend class FolderQueue; // which alone knows the rest, under its lock

    int users = 0;          ///< folders in it, threads busy with it, and the queue where it waits
    bool isWaiting = false; ///< whether it is in the queue, which is when there is any of these:
    QByteArray subfolders;  ///< names, each with a NUL, of folders that are to be read
    qsizetype next = 0;     ///< the place of the first of those that is left
    bool isUnread = false;  ///< names are left in it for anyone to read on

    OpenFolder opened; ///< while it waits, unless too many are open; of the top always
};

/// The path of a folder, beginning with the path of the top.
[[nodiscard]] QByteArray pathOf(const WalkedFolder &folder);

/// Whether that path has more than @p length bytes. Takes no longer the deeper the folder is.
[[nodiscard]] bool isPathLonger(const WalkedFolder &folder, qsizetype length);

/// The folders of one tree that are still to be read, shared by the threads that read them. What
/// was found last is read first, so that little waits. Any thread.
class FolderQueue {
public:
    /// @p top is the folder at @p path, open.
    FolderQueue(QByteArray path, OpenFolder top);
    FolderQueue(const FolderQueue &) = delete;
    FolderQueue &operator=(const FolderQueue &) = delete;
    ~FolderQueue();

    /// What a thread is to do or has done with a folder.
    struct Task {
        WalkedFolder *folder = nullptr; ///< null before the first task

        OpenFolder opened;       ///< the folder; null while it is to be opened:
        OpenFolder base;         ///< a folder above it,
        QByteArray pathFromBase; ///< and its path from there
        bool isShared = false;   ///< another thread began to read the folder

        QByteArray subfolders; ///< found in it: names, each with a NUL
    };

    /// To read the top.
    [[nodiscard]] Task first();

    enum class Next {
        Task,
        Waited, ///< there was none; ask again
        End,    ///< everything is read, or the walk was stopped
    };

    /// Ends a task and takes the next one, or waits a while.
    [[nodiscard]] Next next(Task &task);

    /// Ends a task, if there is one, of which nothing came.
    void drop(Task &task);

    /// Lets other threads, or a later task, read on in the folder of a task. False when too many
    /// are open for it: the thread then reads it to its end.
    [[nodiscard]] bool share(Task &task);

    /// Whether there is a task to take.
    [[nodiscard]] bool hasWaiting();

    /// Closes folders that wait; they are opened again by their path. When descriptors run out.
    void closeWaiting();

    /// No more tasks.
    void stop();

private:
    using Lock = std::unique_lock<std::mutex>;

    void finish(Task &task);
    void take(Task &task);
    void enqueue(WalkedFolder *folder, const OpenFolder &opened);
    void close(WalkedFolder &folder);
    static void release(WalkedFolder *folder);

    std::mutex mutex_;
    std::condition_variable changed_;
    WalkedFolder *const top_;
    std::vector<WalkedFolder *> waiting_;
    int busy_ = 0; ///< tasks in work
    bool isStopped_ = false;
    int mostOpen_;
    int open_ = 0; ///< folders that wait open, beside the top
};

} // namespace MWCore
