// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/session/icons/ItemMetadataIcons.h"

#include "platform/aliases/FileUrl.h"
#include "platform/session/gio/GioPointers.h"

#include <utility>

namespace MWCore {
namespace {

constexpr const char *kFile = "metadata::custom-icon";
constexpr const char *kName = "metadata::custom-icon-name";

GioPointer<GFileInfo> infoOf(const QByteArray &path) {
    const GioPointer<GFile> file(g_file_new_for_path(path.constData()));
    const QByteArray attributes = QByteArray(kFile) + ',' + kName;
    return GioPointer<GFileInfo>(g_file_query_info(
        file.get(), attributes.constData(), G_FILE_QUERY_INFO_NOFOLLOW_SYMLINKS, nullptr, nullptr));
}

/// Null if the attribute is missing or a list.
const char *textOf(GFileInfo *info, const char *attribute) {
    return g_file_info_get_attribute_type(info, attribute) == G_FILE_ATTRIBUTE_TYPE_STRING
               ? g_file_info_get_attribute_string(info, attribute)
               : nullptr;
}

/// The path that the attribute names for the item at @p path: by a URL, or for a folder by the end
/// of one, relative to the folder, as GNOME Files writes it. Empty for anything else.
QByteArray iconFile(const char *attribute, const QByteArray &path) {
    const QByteArray url = attribute;
    const bool isRelative = !url.isEmpty() && !url.startsWith('/') && !url.contains(':');
    return pathOfFileUrl(isRelative ? fileUrl(path) + '/' + url : url).value_or(QByteArray());
}

} // namespace

void connectToMetadata() {
    const GioPointer<GDBusConnection> bus(g_bus_get_sync(G_BUS_TYPE_SESSION, nullptr, nullptr));
    if (bus) // by default, the end of the bus ends the process
        g_dbus_connection_set_exit_on_close(bus.get(), FALSE);
    g_vfs_get_default();
}

std::optional<DesktopIcon> readMetadataIcon(const QByteArray &path) {
    const GioPointer<GFileInfo> info = infoOf(path);
    if (!info)
        return std::nullopt;
    DesktopIcon icon{iconFile(textOf(info.get(), kFile), path),
                     QString::fromUtf8(textOf(info.get(), kName))};
    const bool isEmpty = icon.file.isEmpty() && icon.themeName.isEmpty();
    return isEmpty ? std::nullopt : std::optional(std::move(icon));
}

} // namespace MWCore
