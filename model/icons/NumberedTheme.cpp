// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/icons/NumberedTheme.h"

#include <mutex>
#include <utility>

namespace MWCore {
namespace {

struct LastKnown {
    std::mutex isAsking; ///< so that numbers follow the order of the themes
    std::mutex mutex;
    NumberedTheme theme;
};

LastKnown &shared() {
    static auto *const last = new LastKnown; // never freed: threads may outlive main()
    return *last;
}

} // namespace

NumberedTheme currentTheme() {
    LastKnown &last = shared();
    const std::scoped_lock asking(last.isAsking);
    auto theme = IconTheme::current();
    const std::scoped_lock lock(last.mutex);
    if (theme != last.theme.theme)
        last.theme = {std::move(theme), last.theme.number + 1};
    return last.theme;
}

NumberedTheme lastKnownTheme() {
    LastKnown &last = shared();
    const std::scoped_lock lock(last.mutex);
    return last.theme;
}

} // namespace MWCore
