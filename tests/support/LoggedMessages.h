// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <utility>

#include <QString>
#include <QStringList>

/// What reaches Qt's log while this lives, "category: message" an entry. One at a time.
class LoggedMessages {
public:
    LoggedMessages() {
        messages_.clear(); // what an earlier one left
        before_ = qInstallMessageHandler(record);
    }
    LoggedMessages(const LoggedMessages &) = delete;
    LoggedMessages &operator=(const LoggedMessages &) = delete;
    ~LoggedMessages() { qInstallMessageHandler(before_); }

    /// Everything since this began to live, or since the last call.
    static QStringList take() { return std::exchange(messages_, {}); }

private:
    static void record(QtMsgType /*type*/, const QMessageLogContext &context,
                       const QString &message) {
        messages_ += QLatin1String(context.category) + QLatin1String(": ") + message;
    }

    static inline QStringList messages_;
    QtMessageHandler before_;
};
