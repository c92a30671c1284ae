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

/// A folder of the tree. It has only a name and a parent, so that a deep tree needs neither many
/// descriptors nor long paths.
struct WalkedFolder {
    WalkedFolder *parent = nullptr; ///< null for the top
    QByteArray name;                ///< for the top, its path
    bool hasSidecars = false;       ///< whether names in it begin with "._"; set when it is read

private:
    friend class FolderQueue; // uses the rest, under its lock

    int users = 0;          ///< references: subfolders, tasks, and the queue if it is waiting
    bool isWaiting = false; ///< in the queue: has unread subfolders or is unread itself
    QByteArray subfolders;  ///< names, each with a NUL, of folders to be read
    qsizetype next = 0;     ///< offset of the first name in `subfolders` that is left
    bool isUnread = false;  ///< names in it are left for any thread to read

    OpenFolder opened; ///< while it is waiting, unless too many are open; for the top, always
};

/// The path of a folder, starting with the path of the top.
[[nodiscard]] QByteArray pathOf(const WalkedFolder &folder);

/// Whether that path has more than @p length bytes. The time does not grow with the depth.
[[nodiscard]] bool isPathLonger(const WalkedFolder &folder, qsizetype length);

/// The folders of a tree that are still to be read, shared by the threads that read them. The last
/// folder found is read first, so that the queue stays short. Any thread.
class FolderQueue {
public:
    /// @p top is the open folder at @p path.
    FolderQueue(QByteArray path, OpenFolder top);
    FolderQueue(const FolderQueue &) = delete;
    FolderQueue &operator=(const FolderQueue &) = delete;
    ~FolderQueue();

    /// The task of reading one folder, and its result.
    struct Task {
        WalkedFolder *folder = nullptr; ///< null before the first task

        OpenFolder opened;       ///< the folder; if null, it must be opened by these two:
        OpenFolder base;         ///< a folder above it
        QByteArray pathFromBase; ///< its path relative to `base`
        bool isShared = false;   ///< whether another task began to read the folder

        QByteArray subfolders; ///< found in it: names, each with a NUL
    };

    /// The task of reading the top.
    [[nodiscard]] Task first();

    enum class Next {
        Task,
        Waited, ///< there was no task; call again
        End,    ///< everything is read, or the walk was stopped
    };

    /// Finishes a task and takes the next one, or waits for up to 50 milliseconds.
    [[nodiscard]] Next next(Task &task);

    /// Finishes a task, if there is one, and discards its result.
    void drop(Task &task);

    /// Lets other threads, or a later task, continue reading the folder of a task. False if too
    /// many folders are open: the task must then read the whole folder.
    [[nodiscard]] bool share(Task &task);

    [[nodiscard]] bool hasWaiting();

    /// Closes the waiting folders, which are later opened again by path. For when descriptors run
    /// out.
    void closeWaiting();

    /// Makes next() return End.
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
    int busy_ = 0; ///< unfinished tasks
    bool isStopped_ = false;
    int mostOpen_;
    int open_ = 0; ///< waiting folders that are open, without the top
};

} // namespace MWCore
