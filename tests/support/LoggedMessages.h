// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <utility>

#include <QString>
#include <QStringList>

/// Captures Qt's log messages during its lifetime, each as "category: message". Only one may exist
/// at a time.
class LoggedMessages {
public:
    LoggedMessages() {
        messages_.clear(); // left by an earlier object
        before_ = qInstallMessageHandler(record);
    }
    LoggedMessages(const LoggedMessages &) = delete;
    LoggedMessages &operator=(const LoggedMessages &) = delete;
    ~LoggedMessages() { qInstallMessageHandler(before_); }

    /// The messages since construction or the last call.
    static QStringList take() { return std::exchange(messages_, {}); }

private:
    static void record(QtMsgType /*type*/, const QMessageLogContext &context,
                       const QString &message) {
        messages_ += QLatin1String(context.category) + QLatin1String(": ") + message;
    }

    static inline QStringList messages_;
    QtMessageHandler before_;
};
