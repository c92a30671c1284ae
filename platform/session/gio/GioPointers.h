// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <memory>

#pragma push_macro("signals") // a keyword of Qt and the name of a field in GIO
#undef signals
#include <gio/gio.h>
#pragma pop_macro("signals")

namespace MWCore {

struct ReleaseGio {
    void operator()(void *object) const { g_object_unref(object); }
    void operator()(char *text) const { g_free(text); }
    void operator()(GSettingsSchema *schema) const { g_settings_schema_unref(schema); }
};

/// Owns a reference to an object of GLib, or a text that it has allocated.
template <typename T> using GioPointer = std::unique_ptr<T, ReleaseGio>;

} // namespace MWCore
