// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/icons/IconRequests.h"

#include <atomic>

namespace MWCore {
namespace {

IconRequest takeFirst(std::deque<IconRequest> &requests) {
    IconRequest first = std::move(requests.front());
    requests.pop_front();
    return first;
}

} // namespace

void IconRequests::replace(std::vector<IconRequest> requests) {
    static std::atomic<uint64_t> lists = 0;
    const uint64_t list = ++lists;
    const std::scoped_lock lock(mutex_);
    local_.clear();
    remote_.clear();
    for (auto &[ticket, isWanted] : begun_)
        isWanted = false;
    for (IconRequest &request : requests) {
        request.list = list;
        if (const auto begun = begun_.find(request.ticket); begun != begun_.end())
            begun->second = true;
        else
            local_.push_back(std::move(request));
    }
}

std::vector<IconResult> IconRequests::collect() {
    const std::scoped_lock lock(mutex_);
    for (const IconResult &result : results_)
        begun_.erase(result.ticket);
    return std::exchange(results_, {});
}

bool IconRequests::takeThemeReport() {
    const std::scoped_lock lock(mutex_);
    return std::exchange(isThemeReported_, false);
}

void IconRequests::reportTheme() {
    const std::scoped_lock lock(mutex_);
    if (announce_ && !std::exchange(isThemeReported_, true))
        announce_();
}

void IconRequests::close() {
    const std::scoped_lock lock(mutex_);
    announce_ = nullptr;
    local_.clear();
    remote_.clear();
    results_.clear();
}

std::optional<IconRequest> IconRequests::takeLocal() {
    const std::scoped_lock lock(mutex_);
    if (local_.empty())
        return std::nullopt;
    IconRequest request = takeFirst(local_);
    begun_[request.ticket] = true;
    return request;
}

std::optional<IconRequest> IconRequests::takeRemote(const IsFree &isFree, RemoteMount *mount) {
    const std::scoped_lock lock(mutex_);
    for (auto &[id, requests] : remote_) {
        if (requests.empty() || !isFree(id))
            continue;
        IconRequest request = takeFirst(requests);
        begun_[request.ticket] = true;
        *mount = id;
        return request;
    }
    return std::nullopt;
}

void IconRequests::moveTo(RemoteMount mount, IconRequest request) {
    const std::scoped_lock lock(mutex_);
    const auto begun = begun_.extract(request.ticket);
    if (announce_ && begun && begun.mapped())
        remote_[mount].push_back(std::move(request));
}

void IconRequests::finish(IconResult result) {
    const std::scoped_lock lock(mutex_);
    if (!announce_ || !begun_[result.ticket]) {
        begun_.erase(result.ticket);
        return;
    }
    results_.push_back(std::move(result));
    if (results_.size() == 1)
        announce_();
}

} // namespace MWCore
