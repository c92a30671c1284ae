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

/// What observers receive.
struct MXNotification {
    QString name;
    QPointer<QObject> object; ///< the sender or subject; null if none was given or it was destroyed
    QVariantMap userInfo;
};

/// Delivers notifications within the process to the observers that registered for them.
///
/// Observers may be added and removed, and notifications posted, on any thread and from within an
/// observer. A target is called on the posting thread, whatever its own thread is, so it must not
/// be destroyed on one thread while another thread posts to it. On the posting thread a target may
/// be destroyed at any time; it is then removed.
class MWCORE_EXPORT MXNotificationCenter {
    struct Observer;
    struct StopObserving {
        MWCORE_EXPORT void operator()(Observer *observer) const;
    };

public:
    using Callback = std::function<void(const MXNotification &)>;

    /// Registration of a callback. No call begins once it is destroyed.
    using Observation = std::unique_ptr<Observer, StopObserving>;

    /// The one center of the process. Never null, never destroyed.
    [[nodiscard]] static MXNotificationCenter *defaultCenter();

    MXNotificationCenter(const MXNotificationCenter &) = delete;
    MXNotificationCenter &operator=(const MXNotificationCenter &) = delete;

    /// Calls the slot or invokable method named @p selector ("changed", without parentheses) of
    /// @p target, which takes one MXNotification or no argument, for every notification with this
    /// @p name (empty: any) and @p object (null: any). A missing method is logged when it would be
    /// called. An observer added twice is called twice.
    void addObserver(QObject *target, const QByteArray &selector, const QString &name = {},
                     QObject *object = nullptr);

    /// As above, for a function. An exception that it throws reaches the poster, and later
    /// observers are not called.
    [[nodiscard]] Observation addObserver(Callback callback, const QString &name = {},
                                          QObject *object = nullptr);

    /// Removes the observers added for @p target with this @p name (empty: any) and @p object
    /// (null: any). They are not called again, except that a call already begun on another thread
    /// completes.
    void removeObserver(QObject *target, const QString &name = {}, QObject *object = nullptr);

    /// Calls every matching observer, in the order in which they were added, before it returns. An
    /// observer removed meanwhile is not called; one added meanwhile receives later posts only.
    void postNotificationName(const QString &name, QObject *object = nullptr,
                              const QVariantMap &userInfo = {});

private:
    using Observers = std::vector<std::shared_ptr<Observer>>;

    MXNotificationCenter() = default;
    ~MXNotificationCenter() = default;

    Observer *add(std::shared_ptr<Observer> observer);
    Observers observersOf(const MXNotification &notification);
    void removeIf(const std::function<bool(const Observer &)> &condition);

    std::mutex mutex_; // never held while foreign code runs
    Observers observers_;
};

} // namespace MWCore

Q_DECLARE_METATYPE(MWCore::MXNotification)
