// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// GIO and GTK: the icon that g_file_query_info() reports for each entry of a folder, drawn by
// GtkIconTheme.
#include "benchmarks/itemicons/measure.h"

#include <vector>

#include <gtk/gtk.h>

namespace {

GtkIconTheme *iconTheme = nullptr;
std::vector<GFile *> entries;
std::vector<GIcon *> icons;

long list(const char *theme, const char *path) {
    iconTheme = gtk_icon_theme_new();
    gtk_icon_theme_set_custom_theme(iconTheme, theme);
    GDir *const folder = g_dir_open(path, 0, nullptr);
    while (const char *const name = folder ? g_dir_read_name(folder) : nullptr)
        entries.push_back(g_file_new_build_filename(path, name, nullptr));
    icons.reserve(entries.size());
    return static_cast<long>(entries.size());
}

/// The caller owns it.
GIcon *iconOf(GFile *entry) {
    GFileInfo *const info = g_file_query_info(entry, G_FILE_ATTRIBUTE_STANDARD_ICON,
                                              G_FILE_QUERY_INFO_NONE, nullptr, nullptr);
    if (!info)
        return nullptr;
    GIcon *const icon = g_file_info_get_icon(info);
    g_object_ref(icon);
    g_object_unref(info);
    return icon;
}

void draw(GIcon *icon) {
    GtkIconInfo *const found = gtk_icon_theme_lookup_by_gicon(iconTheme, icon, itemicons::kPixels,
                                                              GTK_ICON_LOOKUP_FORCE_SIZE);
    GdkPixbuf *const image = found ? gtk_icon_info_load_icon(found, nullptr) : nullptr;
    contender::use(image);
    if (image)
        g_object_unref(image);
    if (found)
        g_object_unref(found);
}

void drawAll() {
    for (GFile *const entry : entries) {
        if (GIcon *const icon = iconOf(entry)) {
            icons.push_back(icon);
            draw(icon);
        }
        if (icons.size() == 1)
            contender::endPart("first icon and image");
    }
}

void repeat() {
    for (GIcon *const icon : icons)
        draw(icon);
    contender::endPart("gtk_icon_info_load_icon() again");
}

} // namespace

int main(int argumentCount, char **arguments) {
    return itemicons::run(argumentCount, arguments, list, drawAll, repeat);
}
