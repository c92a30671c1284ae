// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/foundation/MXNotificationCenter.h"

#include "platform/foundation/Log.h"

#include <algorithm>
#include <atomic>
#include <iterator>
#include <utility>

#include <QMetaMethod>

namespace MWCore {

/// Either a target with a selector or a callback, and which notifications it receives.
struct MXNotificationCenter::Observer {
    Observer(QString wantedName, QObject *wantedObject)
        : name(std::move(wantedName)), object(wantedObject),
          wantsAllObjects(wantedObject == nullptr) {}

    QPointer<QObject> target;
    QByteArray selector;
    Callback callback;
    QString name;
    QPointer<QObject> object;
    bool wantsAllObjects;
    std::atomic<bool> removed = false; // a post iterates over a copy of the list

    /// Never true for a callback: its Observation removes it.
    [[nodiscard]] bool isStale() const {
        return !callback && (!target || (!wantsAllObjects && !object));
    }

    [[nodiscard]] bool matches(const MXNotification &notification) const {
        return (name.isEmpty() || name == notification.name) &&
               (wantsAllObjects || (object && object == notification.object));
    }

    void notify(const MXNotification &notification) const;
};

namespace {

/// The parameter lists that a slot may have, in order of preference. moc keeps a type's spelling.
constexpr const char *kParameters[] = {"(MWCore::MXNotification)", "(MXNotification)", "()"};

/// Looked up at each call, because a partly destroyed target has fewer methods.
QMetaMethod methodOf(const QObject &target, const QByteArray &selector) {
    const QMetaObject *const type = target.metaObject();
    for (const char *const parameters : kParameters) {
        const int index = type->indexOfMethod(selector + parameters);
        if (index >= 0)
            return type->method(index);
    }
    return {};
}

void invoke(QObject *target, const QByteArray &selector, const MXNotification &notification) {
    const QMetaMethod method = methodOf(*target, selector);
    if (!method.isValid()) {
        qCWarning(mwcoreLog) << "MXNotificationCenter:" << target << "has no slot" << selector
                             << "for" << notification.name;
    } else if (method.parameterCount() == 0) {
        method.invoke(target, Qt::DirectConnection);
    } else {
        const QByteArray type = method.parameterTypes().constFirst();
        method.invoke(target, Qt::DirectConnection, QGenericArgument(type, &notification));
    }
}

} // namespace

void MXNotificationCenter::Observer::notify(const MXNotification &notification) const {
    if (callback)
        callback(notification);
    else if (target)
        invoke(target, selector, notification);
}

void MXNotificationCenter::StopObserving::operator()(Observer *observer) const {
    defaultCenter()->removeIf([observer](const Observer &each) { return &each == observer; });
}

MXNotificationCenter *MXNotificationCenter::defaultCenter() {
    // Never destroyed: observers may be static objects.
    static auto *const center = new MXNotificationCenter;
    return center;
}

void MXNotificationCenter::addObserver(QObject *target, const QByteArray &selector,
                                       const QString &name, QObject *object) {
    auto observer = std::make_shared<Observer>(name, object);
    observer->target = target;
    observer->selector = selector;
    add(std::move(observer));
}

MXNotificationCenter::Observation
MXNotificationCenter::addObserver(Callback callback, const QString &name, QObject *object) {
    auto observer = std::make_shared<Observer>(name, object);
    observer->callback = std::move(callback);
    return Observation(add(std::move(observer)));
}

void MXNotificationCenter::removeObserver(QObject *target, const QString &name, QObject *object) {
    removeIf([target, &name, object](const Observer &each) {
        return !each.callback && each.target == target && (name.isEmpty() || each.name == name) &&
               (!object || each.object == object);
    });
}

void MXNotificationCenter::postNotificationName(const QString &name, QObject *object,
                                                const QVariantMap &userInfo) {
    const MXNotification notification = {name, object, userInfo};
    for (const auto &observer : observersOf(notification))
        if (!observer->removed)
            observer->notify(notification);
}

MXNotificationCenter::Observer *MXNotificationCenter::add(std::shared_ptr<Observer> observer) {
    const std::lock_guard lock(mutex_);
    return observers_.emplace_back(std::move(observer)).get();
}

MXNotificationCenter::Observers
MXNotificationCenter::observersOf(const MXNotification &notification) {
    removeIf(&Observer::isStale);
    Observers found;
    const std::lock_guard lock(mutex_);
    std::ranges::copy_if(observers_, std::back_inserter(found),
                         [&notification](const auto &each) { return each->matches(notification); });
    return found;
}

void MXNotificationCenter::removeIf(const std::function<bool(const Observer &)> &condition) {
    Observers removed; // destroyed after unlocking: a destructor may call the center
    const std::lock_guard lock(mutex_);
    const auto first =
        std::stable_partition(observers_.begin(), observers_.end(),
                              [&condition](const auto &each) { return !condition(*each); });
    std::for_each(first, observers_.end(), [](const auto &each) { each->removed = true; });
    removed.assign(std::make_move_iterator(first), std::make_move_iterator(observers_.end()));
    observers_.erase(first, observers_.end());
}

} // namespace MWCore
