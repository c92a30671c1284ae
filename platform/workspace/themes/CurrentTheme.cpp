// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/themes/CurrentTheme.h"

#include "platform/foundation/CoarseClock.h"
#include "platform/foundation/FileSystemText.h"
#include "platform/workspace/themes/InstalledThemes.h"

#include <MWCore/MXNotificationCenter.h>

#include <utility>

namespace MWCore {
namespace {

/// The theme that a thread was given last, so that it takes no lock as long as it is the same.
struct Seen {
    const CurrentTheme *from = nullptr;
    uint64_t serial = 0;
    std::weak_ptr<const IconTheme> theme;
};

} // namespace

CurrentTheme &CurrentTheme::shared() {
    static auto *const current = new CurrentTheme; // never freed: threads may outlive main()
    return *current;
}

bool CurrentTheme::isCheckDue(int64_t now) {
    int64_t next = nextCheck_.load(std::memory_order_relaxed);
    return now >= next && nextCheck_.compare_exchange_strong(next, now + kCheckInterval);
}

std::shared_ptr<const IconTheme> CurrentTheme::theme(int64_t now) {
    if (isCheckDue(now))
        check();
    thread_local Seen seen;
    if (seen.from == this && seen.serial == serial_.load(std::memory_order_acquire))
        if (auto theme = seen.theme.lock())
            return theme;
    auto theme = themeUnderLock(&seen.serial);
    seen.theme = theme;
    seen.from = this;
    return theme;
}

std::shared_ptr<const IconTheme> CurrentTheme::themeUnderLock(uint64_t *serial) {
    const std::scoped_lock lock(mutex_);
    if (!choice_.theme) {
        auto settings = std::make_shared<ItemStamps>();
        choice_.theme = std::make_shared<const IconTheme>(name(*settings));
        choice_.settings = std::move(settings);
    }
    *serial = serial_.load(std::memory_order_relaxed);
    return choice_.theme;
}

QString CurrentTheme::name(ItemStamps &settings) const {
    const QByteArray chosen = fileSystemRepresentation(chosen_).value_or(QByteArray());
    return stringWithFileSystemRepresentation(
        chosenThemeName(chosen, IconTheme::baseFolders(), settings));
}

void CurrentTheme::check() {
    Choice old;
    {
        const std::scoped_lock lock(mutex_);
        old = choice_;
    }
    const bool hasChanged = old.theme && old.theme->hasChanged();
    if (hasChanged || (old.theme && old.settings->haveChanged()))
        replace(old, hasChanged);
}

bool CurrentTheme::refresh() {
    check();
    const uint64_t serial = serial_;
    return reported_.exchange(serial) != serial;
}

/// Settings change often, and seldom name another theme.
void CurrentTheme::replace(const Choice &old, bool hasChanged) {
    auto settings = std::make_shared<ItemStamps>();
    const std::scoped_lock lock(mutex_);
    if (choice_.theme != old.theme)
        return; // another thread was faster
    const QString newName = name(*settings);
    choice_.settings = std::move(settings);
    if (!hasChanged && newName == old.theme->name())
        return;
    choice_.theme = std::make_shared<const IconTheme>(newName);
    ++serial_;
}

void CurrentTheme::choose(const QString &name) {
    const std::scoped_lock lock(mutex_);
    chosen_ = name;
    choice_ = {};
    reported_ = ++serial_;
}

std::shared_ptr<const IconTheme> IconTheme::current() {
    return CurrentTheme::shared().theme(coarseTime(CLOCK_MONOTONIC_COARSE));
}

bool IconTheme::refresh() {
    const bool hasChanged = CurrentTheme::shared().refresh();
    if (hasChanged)
        MXNotificationCenter::defaultCenter()->postNotificationName(kChanged);
    return hasChanged;
}

void IconTheme::setCurrentName(const QString &name) {
    CurrentTheme::shared().choose(name);
    MXNotificationCenter::defaultCenter()->postNotificationName(kChanged);
}

} // namespace MWCore
