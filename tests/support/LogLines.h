// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <QString>
#include <QStringList>

/// What is logged while this lives; nothing reaches standard error meanwhile. One at a time.
class LogLines {
public:
    LogLines() : before_(qInstallMessageHandler(keep)) { lines().clear(); }
    LogLines(const LogLines &) = delete;
    LogLines &operator=(const LogLines &) = delete;
    ~LogLines() { qInstallMessageHandler(before_); }

    /// Everything since the last call.
    QStringList take() { return std::exchange(lines(), {}); }

private:
    static QStringList &lines() {
        static QStringList all;
        return all;
    }
    static void keep(QtMsgType /*type*/, const QMessageLogContext & /*where*/,
                     const QString &message) {
        lines().append(message);
    }

    QtMessageHandler before_;
};
