// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/Pasteboard.h"

#include <memory>

#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QThread>

namespace MWCore::Pasteboard {
namespace {

/// Null without a QGuiApplication and on any thread but its own.
QClipboard *clipboard() {
    const auto *const application = qobject_cast<QGuiApplication *>(QCoreApplication::instance());
    return application && application->thread() == QThread::currentThread()
               ? QGuiApplication::clipboard()
               : nullptr;
}

/// Null if there is none. Belongs to the clipboard.
const QMimeData *content() {
    const QClipboard *const general = clipboard();
    return general ? general->mimeData() : nullptr;
}

} // namespace

QStringList types() {
    const QMimeData *const offered = content();
    return offered ? offered->formats() : QStringList();
}

std::optional<QByteArray> data(const QString &type) {
    const QMimeData *const offered = content();
    if (!offered || !offered->hasFormat(type))
        return std::nullopt;
    QByteArray bytes = offered->data(type);
    return bytes.isNull() ? std::nullopt : std::optional(std::move(bytes));
}

void set(const std::vector<std::pair<QString, QByteArray>> &contents) {
    QClipboard *const general = clipboard();
    if (!general)
        return;
    auto offered = std::make_unique<QMimeData>();
    for (const auto &[type, bytes] : contents)
        offered->setData(type, bytes);
    general->setMimeData(offered.release());
}

} // namespace MWCore::Pasteboard
