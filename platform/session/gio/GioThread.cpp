// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/session/gio/GioThread.h"

#include "core/posix/SignalsBlocked.h"
#include "platform/session/gio/GioPointers.h"

#include <system_error>
#include <thread>
#include <utility>

namespace MWCore {
namespace {

void runMainLoop(GMainContext *context) {
    g_main_context_push_thread_default(context);
    g_main_loop_run(g_main_loop_new(context, FALSE));
}

} // namespace

GioThread &GioThread::shared() {
    static auto *const thread = new GioThread; // never freed: threads may outlive main()
    return *thread;
}

GioThread::GioThread() : context_(g_main_context_new()) {
    const SignalsBlocked blocked;
    try {
        std::thread(runMainLoop, context_).detach();
    } catch (const std::system_error &) {
        isLate_ = true; // for ever, as nothing is ever done
    }
}

std::shared_ptr<GioThread::Job> GioThread::addUnderLock(Work work) {
    jobs_.push_back(std::make_shared<Job>(Job{std::move(work), false}));
    const auto doNext = [](void *thread) -> gboolean {
        static_cast<GioThread *>(thread)->doNext();
        return G_SOURCE_REMOVE;
    };
    // g_main_context_invoke() would not wait for the end of the work that calls this.
    GSource *const source = g_idle_source_new();
    g_source_set_priority(source, G_PRIORITY_DEFAULT);
    g_source_set_callback(source, doNext, this, nullptr);
    g_source_attach(source, context_);
    g_source_unref(source);
    return jobs_.back();
}

void GioThread::doNext() {
    std::unique_lock lock(mutex_);
    const std::shared_ptr<Job> job = jobs_.front();
    lock.unlock();
    job->work();
    job->work = nullptr;
    lock.lock();
    job->isDone = true;
    jobs_.pop_front();
    isLate_ = isLate_ && !jobs_.empty();
    finished_.notify_all();
}

bool GioThread::run(Work work, std::chrono::milliseconds patience) {
    if (g_main_context_is_owner(context_)) { // work that runs already, or a signal
        work();
        return true;
    }
    std::unique_lock lock(mutex_);
    if (isLate_)
        return false;
    const std::shared_ptr<Job> job = addUnderLock(std::move(work));
    if (!finished_.wait_for(lock, patience, [&job] { return job->isDone; }))
        isLate_ = true;
    return job->isDone;
}

void GioThread::start(Work work) {
    const std::scoped_lock lock(mutex_);
    (void)addUnderLock(std::move(work));
}

} // namespace MWCore
