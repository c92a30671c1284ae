// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <chrono>
#include <condition_variable>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>

using GMainContext = struct _GMainContext;

namespace MWCore {

/// The thread on which GIO is called, because GIO may wait for a bus or a service that does not
/// answer, and then its caller must not. The thread runs GLib's main loop: the signals of objects
/// that were made on it arrive on it. It never ends. Any thread may call, also within a forked
/// process, where all work is late.
class GioThread {
public:
    using Work = std::function<void()>;

    static GioThread &shared();

    GioThread();
    GioThread(const GioThread &) = delete;
    GioThread &operator=(const GioThread &) = delete;

    /// Does @p work and returns true. Returns false if it was not done within @p patience; it is
    /// done later then, so it must own what it uses. As long as earlier work is late, returns false
    /// at once and drops @p work. On this thread itself, does it at once.
    [[nodiscard]] bool run(Work work, std::chrono::milliseconds patience);

    /// Does @p work after all earlier work, without waiting for it.
    void start(Work work);

private:
    struct Job {
        Work work;
        bool isDone = false;
    };

    ~GioThread() = default;
    [[nodiscard]] std::shared_ptr<Job> addUnderLock(Work work);
    void doNext();

    GMainContext *context_;
    std::mutex mutex_; ///< of everything below
    std::condition_variable finished_;
    std::deque<std::shared_ptr<Job>> jobs_; ///< the first one may be running
    bool isLate_ = false;                   ///< somebody has stopped waiting
};

} // namespace MWCore
