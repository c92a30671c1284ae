// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "model/icons/IconRequests.h"
#include "model/icons/ItemPlaces.h"

#include <condition_variable>
#include <cstdint>
#include <list>
#include <map>
#include <memory>
#include <mutex>
#include <optional>

namespace MWCore {

/// The threads that find and draw icons, for all providers of the process. Those for local file
/// systems wait for no other one. At most two wait for the same remote mount, or one if many wait,
/// so that mounts that never answer do not occupy all threads. No thread is joined: one that waits
/// for ever ends with the process. Any thread.
class IconWorkers {
public:
    /// Never freed, since its threads may outlive main().
    [[nodiscard]] static IconWorkers &shared();

    /// Works on @p requests, in turn with those of others, until they are removed.
    void add(const std::shared_ptr<IconRequests> &requests);
    void remove(const std::shared_ptr<IconRequests> &requests);

    /// To be called when there are new requests.
    void wake();

private:
    enum class Lane : uint8_t { Local, Remote };
    struct Task {
        std::shared_ptr<IconRequests> requests;
        IconRequest request;
        std::optional<RemoteMount> mount; ///< in the remote lane
    };
    struct Threads {
        std::condition_variable hasWork;
        int count = 0;
        int idle = 0; ///< those that wait or have just been started
        int busy = 0;
    };

    /// Where items are, according to the mount table of the moment. Belongs to one thread.
    class Places {
    public:
        [[nodiscard]] std::optional<RemoteMount> remoteMountOf(const IconRequest &request);

    private:
        std::optional<ItemPlaces> places_;
        uint64_t list_ = 0;
    };

    IconWorkers() = default;

    void run(Lane lane);
    void work(Task &task, Places &places);
    static void prepare();
    void pause();

    // With the mutex locked:
    bool start(Lane lane);
    [[nodiscard]] std::optional<Task> next(Lane lane);
    [[nodiscard]] std::optional<Task> take(Lane lane,
                                           const std::shared_ptr<IconRequests> &requests);
    [[nodiscard]] bool isFree(RemoteMount mount) const;
    [[nodiscard]] bool isNeeded(Lane lane) const;
    void begin(const Task &task);
    void end(const Task &task);
    void keepOneReady();
    [[nodiscard]] Threads &threadsFor(const Task &task) { return task.mount ? remote_ : local_; }
    [[nodiscard]] Threads &threadsOf(Lane lane) { return lane == Lane::Local ? local_ : remote_; }

    std::mutex mutex_;
    std::list<std::shared_ptr<IconRequests>> clients_; ///< the one whose turn is next first
    Threads local_;
    Threads remote_;
    std::map<RemoteMount, int> workersOf_;
    bool isPaused_ = false; ///< while the program ends
    std::condition_variable isQuiet_;
};

} // namespace MWCore
