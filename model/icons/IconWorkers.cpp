// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/icons/IconWorkers.h"

#include "core/posix/SignalsBlocked.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <exception>
#include <new>
#include <thread>
#include <utility>

#include <QCoreApplication>
#include <QMimeDatabase>

namespace MWCore {
namespace {

constexpr unsigned kFewestLocal = 2;
constexpr unsigned kMostLocal = 4;
constexpr int kMostRemote = 128; // a thread that waits takes little but address space
constexpr int kManyRemote = 16;  // from which on each mount has a single thread
constexpr int kMostPerMount = 2;
constexpr int kMostIdleRemote = 4;

int mostLocal() {
    return static_cast<int>(
        std::clamp(std::thread::hardware_concurrency(), kFewestLocal, kMostLocal));
}

IconResult resultOf(const IconRequest &request) {
    if (request.themeCheck == IconRequest::ThemeCheck::Now)
        (void)IconTheme::refresh();
    IconResult result;
    result.ticket = request.ticket;
    result.theme = currentTheme();
    result.icon = request.icon ? request.icon : iconOf(request.item);
    if (request.extent == IconRequest::Extent::FindAndDraw)
        result.image = result.icon->heldImage(request.points, request.scale, result.theme.theme);
    return result;
}

/// Without an icon if memory runs out.
IconResult resultOrNothing(const IconRequest &request) {
    try {
        return resultOf(request);
    } catch (const std::bad_alloc &) {
        return {.ticket = request.ticket, .icon = {}, .image = {}, .theme = {}};
    }
}

} // namespace

IconWorkers &IconWorkers::shared() {
    static auto *const workers = new IconWorkers;
    return *workers;
}

void IconWorkers::add(const std::shared_ptr<IconRequests> &requests) {
    const auto pauseAtEnd = [] { shared().pause(); };
    qRemovePostRoutine(pauseAtEnd);
    qAddPostRoutine(pauseAtEnd);
    const std::scoped_lock lock(mutex_);
    clients_.push_back(requests);
}

void IconWorkers::remove(const std::shared_ptr<IconRequests> &requests) {
    requests->close();
    const std::scoped_lock lock(mutex_);
    clients_.remove(requests);
}

void IconWorkers::wake() {
    const std::scoped_lock lock(mutex_);
    isPaused_ = false;
    while (local_.count < mostLocal() && start(Lane::Local)) {
    }
    local_.hasWork.notify_all();
}

/// Returns whether the system permits it.
bool IconWorkers::start(Lane lane) {
    const SignalsBlocked blocked;
    try {
        std::thread([this, lane] { run(lane); }).detach();
    } catch (const std::exception &) { // no thread, or no memory for it
        return false;
    }
    ++threadsOf(lane).count;
    ++threadsOf(lane).idle;
    ++threadsOf(lane).busy; // until it is prepared
    return true;
}

void IconWorkers::run(Lane lane) {
    prepare();
    Threads &threads = threadsOf(lane);
    Places places;
    std::unique_lock lock(mutex_);
    --threads.idle;
    --threads.busy;
    isQuiet_.notify_all();
    for (;;) {
        std::optional<Task> task = next(lane);
        if (!task) {
            if (!isNeeded(lane))
                break;
            ++threads.idle;
            threads.hasWork.wait(lock);
            --threads.idle;
            continue;
        }
        begin(*task);
        lock.unlock();
        work(*task, places);
        lock.lock();
        end(*task);
    }
    --threads.count;
}

/// Whether a thread without work is to wait for some: many are left of mounts that were slow.
bool IconWorkers::isNeeded(Lane lane) const {
    return lane == Lane::Local || remote_.idle < kMostIdleRemote;
}

std::optional<IconWorkers::Task> IconWorkers::next(Lane lane) {
    std::optional<Task> task;
    for (auto client = clients_.begin(); !isPaused_ && !task && client != clients_.end();) {
        const auto tried = client++;
        if ((task = take(lane, *tried)))
            clients_.splice(clients_.end(), clients_, tried);
    }
    return task;
}

std::optional<IconWorkers::Task> IconWorkers::take(Lane lane,
                                                   const std::shared_ptr<IconRequests> &requests) {
    Task task{.requests = requests, .request = {}, .mount = {}};
    RemoteMount mount = 0;
    auto request =
        lane == Lane::Local
            ? requests->takeLocal()
            : requests->takeRemote([this](RemoteMount id) { return isFree(id); }, &mount);
    if (!request)
        return std::nullopt;
    task.request = *std::move(request);
    if (lane == Lane::Remote)
        task.mount = mount;
    return task;
}

bool IconWorkers::isFree(RemoteMount mount) const {
    const auto found = workersOf_.find(mount);
    const int most = remote_.busy < kManyRemote ? kMostPerMount : 1;
    return found == workersOf_.end() || found->second < most;
}

void IconWorkers::begin(const Task &task) {
    ++threadsFor(task).busy;
    if (!task.mount)
        return;
    ++workersOf_[*task.mount];
    keepOneReady();
}

void IconWorkers::end(const Task &task) {
    --threadsFor(task).busy;
    if (task.mount && --workersOf_[*task.mount] == 0)
        workersOf_.erase(*task.mount);
    isQuiet_.notify_all();
}

/// Any of the others may be waiting for its mount.
void IconWorkers::keepOneReady() {
    if (remote_.idle == 0 && remote_.count < kMostRemote)
        (void)start(Lane::Remote);
    remote_.hasWork.notify_one();
}

void IconWorkers::work(Task &task, Places &places) {
    const auto remote = task.mount ? std::nullopt : places.remoteMountOf(task.request);
    if (remote) {
        task.requests->moveTo(*remote, std::move(task.request));
        const std::scoped_lock lock(mutex_);
        keepOneReady();
        return;
    }
    task.requests->finish(resultOrNothing(task.request));
}

/// Reads the mount table again for each list of requests.
std::optional<RemoteMount> IconWorkers::Places::remoteMountOf(const IconRequest &request) {
    if (!request.item.isLocal)
        return std::nullopt;
    if (list_ != request.list)
        places_.emplace();
    list_ = request.list;
    return places_->remoteMountOf(request.item.path);
}

/// Makes the static objects of other libraries that drawing needs, and only then registers what is
/// to be called at exit, so that the workers pause before those objects are destroyed.
void IconWorkers::prepare() {
    [[maybe_unused]] static const int prepared = [] {
        (void)QMimeDatabase().mimeTypeForName("text/plain");
        (void)drawnGenericIcon(ItemIconFacts::Kind::Link)->heldImage(1, 1, nullptr);
        return std::atexit([] { shared().pause(); });
    }();
}

/// Begins nothing more, and waits for work that is under way; on remote mounts only for a moment,
/// as it may never end.
void IconWorkers::pause() {
    using std::chrono::milliseconds;
    std::unique_lock lock(mutex_);
    isPaused_ = true;
    isQuiet_.wait_for(lock, milliseconds(2000), [this] { return local_.busy == 0; });
    isQuiet_.wait_for(lock, milliseconds(200), [this] { return remote_.busy == 0; });
}

} // namespace MWCore
