// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/icons/DrawnIcons.h"

#include "platform/foundation/FrameworkResources.h"

#include <algorithm>

namespace MWCore {
namespace {

bool isDrawn(const QString &name) {
    return !FrameworkResources::path(name, QStringLiteral("svg")).isEmpty();
}

/// The drawing of @p name that is made for @p points.
QString inSize(const QString &name, int points) {
    for (const int size : {16, 24}) {
        QString small = name + u'-' + QString::number(size);
        if (points <= size && isDrawn(small))
            return small;
    }
    return name;
}

} // namespace

QString drawingFor(const IconRef &icon, int points) {
    const auto drawn = std::ranges::find_if(icon.themeNames, isDrawn);
    return inSize(drawn == icon.themeNames.end() ? icon.drawing : *drawn, points);
}

std::optional<QByteArray> drawingData(const QString &name) {
    return FrameworkResources::data(name, QStringLiteral("svg"));
}

} // namespace MWCore
