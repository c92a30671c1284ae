// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/session/icons/DesktopIcons.h"

#include "platform/session/icons/ItemMetadataIcons.h"
#include "platform/session/icons/SessionTheme.h"

#include <MWCore/DesktopIconLookup.h>
#include <MWCore/IconTheme.h>

#include <memory>

#include <unistd.h>

#include <QByteArray>

namespace MWCore {
namespace {

/// GIO would otherwise start a bus of its own.
bool hasSessionBus() {
    if (!qEnvironmentVariableIsEmpty("DBUS_SESSION_BUS_ADDRESS"))
        return true;
    const QByteArray folder = qgetenv("XDG_RUNTIME_DIR");
    return !folder.isEmpty() && access((folder + "/bus").constData(), F_OK) == 0;
}

} // namespace

bool useDesktopIcons() {
    if (!hasSessionBus())
        return false;
    followSessionTheme([](const QString &name) { IconTheme::setCurrentName(name); });
    setDesktopIconLookup([icons = std::make_shared<ItemMetadataIcons>()](const QByteArray &path) {
        return icons->lookUp(path);
    });
    return true;
}

void stopUsingDesktopIcons() {
    setDesktopIconLookup({});
    stopFollowingSessionTheme();
}

} // namespace MWCore
