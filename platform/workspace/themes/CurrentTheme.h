// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/workspace/themes/IconTheme.h"
#include "platform/workspace/themes/ItemStamps.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>

#include <QString>

namespace MWCore {

/// The user's theme, as IconTheme::current() returns it. Any thread.
class CurrentTheme {
public:
    static constexpr int64_t kCheckInterval = 5'000'000'000; ///< nanoseconds

    static CurrentTheme &shared();

    /// The theme; calls check() if @p now, in nanoseconds of a clock that never goes back, is an
    /// interval later than the last time.
    [[nodiscard]] std::shared_ptr<const IconTheme> theme(int64_t now);

    bool refresh();                   ///< see IconTheme::refresh()
    void choose(const QString &name); ///< see IconTheme::setCurrentName()

private:
    /// A theme and what decided that it is this one.
    struct Choice {
        std::shared_ptr<const IconTheme> theme;
        std::shared_ptr<const ItemStamps> settings;
    };

    [[nodiscard]] bool isCheckDue(int64_t now);
    void check(); ///< replaces the theme if it has changed
    [[nodiscard]] std::shared_ptr<const IconTheme> themeUnderLock(uint64_t *serial);
    [[nodiscard]] QString name(ItemStamps &settings) const;
    void replace(const Choice &old, bool hasChanged);

    std::mutex mutex_; ///< of the chosen name and the choice
    QString chosen_;
    Choice choice_;                      ///< empty until it is needed
    std::atomic<uint64_t> serial_ = 1;   ///< of choice_.theme
    std::atomic<uint64_t> reported_ = 1; ///< the serial when refresh() was called last
    std::atomic<int64_t> nextCheck_ = 0;
};

} // namespace MWCore
