// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/aliases/FileUrl.h"

#include <algorithm>

#include <QString>
#include <QSysInfo>

namespace MWCore {
namespace {

constexpr QByteArrayView kScheme = "file:";

bool isThisHost(const QByteArray &host) {
    return host.isEmpty() || host.toLower() == "localhost" ||
           host.toLower() == QSysInfo::machineHostName().toLower().toLocal8Bit();
}

} // namespace

QByteArray fileUrl(const QByteArray &path) {
    return "file://" + path.toPercentEncoding("/");
}

std::optional<QByteArray> pathOfFileUrl(const QByteArray &url) {
    if (url.first(std::min(url.size(), kScheme.size())).toLower() != kScheme)
        return std::nullopt;
    QByteArray rest = url.sliced(kScheme.size());
    if (rest.startsWith("//")) {
        const qsizetype slash = rest.indexOf('/', 2);
        if (slash < 0 || !isThisHost(rest.sliced(2, slash - 2)))
            return std::nullopt;
        rest = rest.sliced(slash);
    }
    const QByteArray path = QByteArray::fromPercentEncoding(rest);
    return path.startsWith('/') && !path.contains('\0') ? std::optional(path) : std::nullopt;
}

} // namespace MWCore
