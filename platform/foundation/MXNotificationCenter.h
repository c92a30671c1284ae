// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "mwcore_export.h"

#include <functional>
#include <memory>
#include <mutex>
#include <vector>

#include <QByteArray>
#include <QMetaType>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QVariantMap>

namespace MWCore {

/// What observers are told.
struct MXNotification {
    QString name;
    QPointer<QObject> object; ///< whom it is about; null for nobody, or when an observer ended it
    QVariantMap userInfo;
};

/// Tells those who asked what happened anywhere in the process.
///
/// Observers may be added and removed, and notifications posted, on any thread and from within an
/// observer. A target is called on the posting thread whatever its own is, so a target that others
/// post to must not be destroyed on one thread while another one posts. On the posting thread a
/// target may go at any time: it is forgotten silently.
class MWCORE_EXPORT MXNotificationCenter {
    struct Observer;
    struct StopObserving {
        MWCORE_EXPORT void operator()(Observer *observer) const;
    };

public:
    using Callback = std::function<void(const MXNotification &)>;

    /// A callback that is being called; no call begins once this went.
    using Observation = std::unique_ptr<Observer, StopObserving>;

    /// The one center of the process. Never null, never destroyed.
    [[nodiscard]] static MXNotificationCenter *defaultCenter();

    MXNotificationCenter(const MXNotificationCenter &) = delete;
    MXNotificationCenter &operator=(const MXNotificationCenter &) = delete;

    /// Calls the slot or invokable method named @p selector ("changed", without parentheses) of
    /// @p target, which takes one MXNotification or nothing, for every notification of this
    /// @p name (empty: all) about this @p object (null: all). A method that is not there is logged
    /// when it should be called. Adding an observer twice makes two calls.
    void addObserver(QObject *target, const QByteArray &selector, const QString &name = {},
                     QObject *object = nullptr);

    /// As above, for a function. What it throws, the poster gets, and later observers are not told.
    [[nodiscard]] Observation addObserver(Callback callback, const QString &name = {},
                                          QObject *object = nullptr);

    /// Takes back what was added for @p target: of this @p name (empty: any) and this @p object
    /// (null: any). None of it is called any more, except where a call on another thread has begun.
    void removeObserver(QObject *target, const QString &name = {}, QObject *object = nullptr);

    /// Calls every observer that asked for it, in the order in which they were added, before it
    /// returns. One removed meanwhile is left out; one added meanwhile hears of later posts only.
    void postNotificationName(const QString &name, QObject *object = nullptr,
                              const QVariantMap &userInfo = {});

private:
    using Observers = std::vector<std::shared_ptr<Observer>>;

    MXNotificationCenter() = default;
    ~MXNotificationCenter() = default;

    Observer *add(std::shared_ptr<Observer> observer);
    Observers observersOf(const MXNotification &notification);
    void removeIf(const std::function<bool(const Observer &)> &goes);

    std::mutex mutex_; // never held while foreign code runs
    Observers observers_;
};

} // namespace MWCore

Q_DECLARE_METATYPE(MWCore::MXNotification)
