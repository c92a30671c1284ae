// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/session/icons/SessionTheme.h"

#include "platform/session/gio/GioPointers.h"
#include "platform/session/gio/GioThread.h"

#include <chrono>
#include <utility>

#include <QByteArray>
#include <QByteArrayList>

namespace MWCore {
namespace {

constexpr std::chrono::milliseconds kPatience(250);
constexpr const char *kKey = "icon-theme";

struct DesktopRow {
    const char *desktop; ///< in XDG_CURRENT_DESKTOP
    const char *schema;
};
constexpr DesktopRow kDesktopRows[] = {
    {"X-Cinnamon", "org.cinnamon.desktop.interface"}, {"MATE", "org.mate.interface"},
    {"GNOME", "org.gnome.desktop.interface"},         {"Unity", "org.gnome.desktop.interface"},
    {"Budgie", "org.gnome.desktop.interface"},        {"Pantheon", "org.gnome.desktop.interface"},
};

const char *schemaOfDesktop() {
    const QByteArrayList desktops = qgetenv("XDG_CURRENT_DESKTOP").split(':');
    for (const DesktopRow &row : kDesktopRows)
        if (desktops.contains(row.desktop))
            return row.schema;
    return nullptr;
}

/// Whether GSettings, which ends the process if something is missing, can be asked for the key.
bool isInstalled(const char *schema) {
    GSettingsSchemaSource *const source = g_settings_schema_source_get_default();
    const GioPointer<GSettingsSchema> found(
        source ? g_settings_schema_source_lookup(source, schema, TRUE) : nullptr);
    return found && g_settings_schema_has_key(found.get(), kKey);
}

/// The settings that are followed. Belongs to the thread of GIO.
struct Followed {
    GioPointer<GSettings> settings;
    SessionThemeChanged changed;
};

Followed &followed() {
    static auto *const followed = new Followed; // never freed: threads may outlive main()
    return *followed;
}

void report() {
    const GioPointer<char> name(g_settings_get_string(followed().settings.get(), kKey));
    if (name && *name)
        followed().changed(QString::fromUtf8(name.get()));
}

void settingsChanged(GSettings * /*settings*/, const char * /*key*/, void * /*data*/) {
    report();
}

void stop() {
    if (const Followed last = std::exchange(followed(), {}); last.changed)
        last.changed({});
}

void follow(const SessionThemeChanged &changed) {
    const char *const schema = schemaOfDesktop();
    stop();
    if (!schema || !isInstalled(schema))
        return;
    followed() = {GioPointer<GSettings>(g_settings_new(schema)), changed};
    g_signal_connect(followed().settings.get(), "changed::icon-theme", G_CALLBACK(settingsChanged),
                     nullptr);
    report(); // GSettings sends the signal only for keys that were read
}

void startAndWait(GioThread::Work work) {
    GioThread::shared().start(std::move(work));
    (void)GioThread::shared().run([] {}, kPatience);
}

} // namespace

void followSessionTheme(SessionThemeChanged changed) {
    startAndWait([changed = std::move(changed)] { follow(changed); });
}

void stopFollowingSessionTheme() {
    startAndWait(stop);
}

} // namespace MWCore
