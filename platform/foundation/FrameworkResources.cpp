// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/foundation/FrameworkResources.h"

#include <QFile>
#include <QFileInfo>

namespace MWCore::FrameworkResources {

QString path(const QString &name, const QString &type) {
    const QString file = type.isEmpty() ? name : name + u'.' + type;
    const QString found = QLatin1String(":/mwcore/") + file;
    return !file.contains(u'/') && QFileInfo(found).isFile() ? found : QString();
}

std::optional<QByteArray> data(const QString &name, const QString &type) {
    const QString found = path(name, type);
    QFile file(found);
    if (found.isEmpty() || !file.open(QIODevice::ReadOnly))
        return std::nullopt;
    return file.readAll();
}

} // namespace MWCore::FrameworkResources
