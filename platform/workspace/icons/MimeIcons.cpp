// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/icons/MimeIcons.h"

#include "platform/foundation/ShortMemo.h"
#include "platform/workspace/icons/IconNames.h"

#include <QMimeDatabase>
#include <QMimeType>

namespace MWCore {
namespace {

IconRef iconOf(const QMimeType &type) {
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

} // namespace

IconRef mimeTypeIcon(const QString &name) {
    static auto *const memo =
        new ShortMemo<QString, IconRef>; // never freed: threads outlive main()
    return memo->value(name, [&name] { return iconOf(QMimeDatabase().mimeTypeForName(name)); });
}

} // namespace MWCore
