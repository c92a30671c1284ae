// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/session/gio/GioThread.h"

#include "platform/session/gio/GioPointers.h"

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
    std::thread(runMainLoop, context_).detach();
}

std::shared_ptr<GioThread::Job> GioThread::addUnderLock(Work work) {
    jobs_.push_back(std::make_shared<Job>(Job{std::move(work), false}));
    const auto doNext = [](void *thread) -> gboolean {
        static_cast<GioThread *>(thread)->doNext();
        return G_SOURCE_REMOVE;
    };
    g_main_context_invoke_full(context_, G_PRIORITY_DEFAULT, doNext, this, nullptr);
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
