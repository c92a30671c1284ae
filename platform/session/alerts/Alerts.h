// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "mwdesktop_export.h"

#include <QString>

namespace MWCore {

/// A message that the user has to acknowledge.
struct Alert {
    QString title;
    QString message;
    QString button; ///< text of the only button
};

/// How the framework alerts the user. A program that shows windows makes a MessageBoxAlerts the
/// current one; until then alerts are written to the log. Interface thread only.
class MWDESKTOP_EXPORT Alerts {
public:
    Alerts() = default;
    Alerts(const Alerts &) = delete;
    Alerts &operator=(const Alerts &) = delete;

    /// Restores the alerts that are written to the log if this is the current object.
    virtual ~Alerts();

    /// The object in use, never null.
    [[nodiscard]] static Alerts *current();

    /// Makes @p alerts, which stays the caller's, the current object; null restores the alerts that
    /// are written to the log.
    static void setCurrent(Alerts *alerts);

    /// Shows @p alert and waits until the user acknowledges it; if it only goes to the log, returns
    /// at once.
    virtual void show(const Alert &alert) = 0;

    /// Sounds the system beep, if there is one.
    virtual void beep() = 0;
};

} // namespace MWCore
