// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/icons/MimeIcons.h"

#include "platform/workspace/icons/IconNames.h"

#include <QMimeDatabase>

namespace MWCore {

IconRef mimeTypeIcon(const QMimeType &type) {
    IconRef icon = themeIcon({type.iconName(), type.genericIconName()}, kFileDrawing);
    for (const QString &ancestor : type.allAncestors()) {
        const QMimeType parent = QMimeDatabase().mimeTypeForName(ancestor);
        icon.themeNames += {parent.iconName(), parent.genericIconName()};
    }
    icon.themeNames += {"text-x-generic", "unknown"};
    icon.themeNames.removeAll(QString());
    icon.themeNames.removeDuplicates();
    return icon;
}

} // namespace MWCore
