// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <gio/gio.h>

/// Lists a folder with GIO's enumerator, calls `read(GFileInfo *)` for each entry, and releases it.
/// Returns the number of entries, or -1 if the folder cannot be read.
template <typename Read> long listWithGio(const char *path, const char *attributes, Read read) {
    GFile *const folder = g_file_new_for_path(path);
    GFileEnumerator *const enumerator = g_file_enumerate_children(
        folder, attributes, G_FILE_QUERY_INFO_NOFOLLOW_SYMLINKS, nullptr, nullptr);
    if (!enumerator)
        return -1;
    long entries = 0;
    while (GFileInfo *const info = g_file_enumerator_next_file(enumerator, nullptr, nullptr)) {
        read(info);
        ++entries;
        g_object_unref(info);
    }
    return entries;
}
