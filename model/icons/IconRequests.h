// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "model/icons/ItemIconFacts.h"
#include "model/icons/ItemPlaces.h"
#include "model/icons/NumberedTheme.h"

#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace MWCore {

/// An icon that is to be found, drawn, or both.
struct IconRequest {
    enum class Extent : uint8_t { Find, FindAndDraw };
    enum class ThemeCheck : uint8_t {
        Usual,
        Now ///< whether it has changed on the disk
    };

    uint64_t ticket = 0; ///< names the request
    ItemIconFacts item;
    ItemIcon::Ptr icon; ///< if it is already found
    int points = 0;
    qreal scale = 1; ///< pixels per point
    Extent extent = Extent::FindAndDraw;
    ThemeCheck themeCheck = ThemeCheck::Usual;
    uint64_t list = 0; ///< names the list that the request came with
};

struct IconResult {
    uint64_t ticket = 0;
    ItemIcon::Ptr icon;
    HeldIconImage image; ///< null if it could not or was not to be drawn
    NumberedTheme theme; ///< in which it is drawn
};

/// The requests of one provider and what came of them. The provider and the workers share it, so
/// that either may go first. Any thread.
class IconRequests {
public:
    /// Whether a worker may now wait for that mount.
    using IsFree = std::function<bool(RemoteMount)>;

    /// @p announce is called on any thread when there is news: results or another theme. It is not
    /// called again until results are collected. It must not call this object.
    explicit IconRequests(std::function<void()> announce) : announce_(std::move(announce)) {}

    /// @name For the provider
    /// @{

    /// Replaces the requests that nobody has begun; the most important one comes first. Those that
    /// were begun and are in the new list are not begun again.
    void replace(std::vector<IconRequest> requests);
    [[nodiscard]] std::vector<IconResult> collect();
    /// Whether reportTheme() was called since this was asked last.
    [[nodiscard]] bool takeThemeReport();

    /// Drops all requests and results. No announcement begins afterwards.
    void close();

    /// @}
    /// Reports that the user's theme is another one.
    void reportTheme();

    /// @name For the workers
    /// @{

    /// The next one of items on local file systems, or whose file system is not known yet.
    [[nodiscard]] std::optional<IconRequest> takeLocal();
    /// The next one of items on a remote mount that is free, which is stored in @p mount.
    [[nodiscard]] std::optional<IconRequest> takeRemote(const IsFree &isFree, RemoteMount *mount);

    /// Puts back a request that takeLocal() has returned.
    void moveTo(RemoteMount mount, IconRequest request);
    void finish(IconResult result);

    /// @}

private:
    std::mutex mutex_;
    std::function<void()> announce_; ///< null once closed
    std::deque<IconRequest> local_;
    std::map<RemoteMount, std::deque<IconRequest>> remote_;
    std::map<uint64_t, bool> begun_; ///< until the result is collected; whether it is wanted
    std::vector<IconResult> results_;
    bool isThemeReported_ = false;
};

} // namespace MWCore
