// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "OffscreenGraphics.h"

#include <QGuiApplication>

namespace MWCore::mwfile {

void useOffscreenGraphics() {
    // Nothing that the session configures is loaded: its plug-ins would connect to a bus.
    for (const char *const variable : {"QT_QPA_PLATFORMTHEME", "QT_IM_MODULE", "QT_IM_MODULES"})
        qunsetenv(variable);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    qputenv("QT_QPA_OFFSCREEN_NO_GLX", "1");
    static int count = 1;
    static char name[] = "mwfile";
    static char *arguments[] = {name, nullptr};
    static const QGuiApplication application(count, arguments);
}

} // namespace MWCore::mwfile
