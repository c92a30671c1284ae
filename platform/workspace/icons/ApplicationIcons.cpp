// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/DescriptorPath.h"
#include "platform/files/PathParts.h"
#include "platform/formats/DesktopEntry.h"
#include "platform/formats/PropertyList.h"
#include "platform/foundation/FileSystemText.h"
#include "platform/launch/ApplicationFolder.h"
#include "platform/workspace/icons/IconFiles.h"
#include "platform/workspace/icons/IconNames.h"
#include "platform/workspace/icons/IconSources.h"
#include "platform/workspace/themes/IconThemeIndex.h"

#include <initializer_list>
#include <optional>

#include <QVariantMap>

#include <fcntl.h>
#include <sys/stat.h>

namespace MWCore {
namespace {

constexpr const char *kAppRun = "AppRun";
constexpr int64_t kLongestDescription = 1'000'000; // bytes; real ones have some 10,000

/// What an application folder says about its icon.
struct Application {
    bool isAppDir = false;
    QByteArray iconName; ///< empty if it names none, or not a plain name
};

QByteArray plainName(const QString &name) {
    const auto bytes = fileSystemRepresentation(name);
    return bytes && isPlainName(*bytes) ? *bytes : QByteArray();
}

std::optional<Application> bundleIn(FolderFiles &folder) {
    const auto list = folder.find("Contents/Info.plist");
    const auto bytes = list ? list->read(kLongestDescription) : std::nullopt;
    const QVariant content = bytes ? readPropertyList(*bytes) : QVariant();
    if (content.typeId() != QMetaType::QVariantMap)
        return std::nullopt;
    return Application{false, plainName(content.toMap().value("CFBundleIconFile").toString())};
}

/// Lists @p opened, the same folder, so that nothing else is listed if its path leads to a link
/// now.
std::optional<Application> appDirIn(FolderFiles &folder, const Descriptor &opened) {
    if (!folder.findAnywhere(kAppRun))
        return std::nullopt;
    std::optional<QByteArray> bytes;
    (void)describingEntry(pathOfDescriptor(opened.number()), [&](const QByteArray &name) {
        const auto entry = folder.find(name);
        bytes = entry ? entry->read(kLongestDescription) : std::nullopt;
        return bytes.has_value();
    });
    if (!bytes)
        return std::nullopt;
    const auto icon = DesktopEntry(*bytes).localizedValue(DesktopEntry::kMainGroup, "Icon");
    return Application{true, plainName(icon.value_or(QString()))};
}

/// Adds the first of @p names that is a file in the folder.
void addFile(IconRef &icon, FolderFiles &folder, std::initializer_list<QByteArray> names) {
    for (const QByteArray &name : names)
        if (const auto file = folder.find(name))
            return setFile(icon, *file);
}

void addBundleIcon(IconRef &icon, FolderFiles &folder, const QByteArray &name) {
    if (!name.isEmpty())
        addFile(icon, folder,
                {"Contents/Resources/" + name + ".icns", "Contents/Resources/" + name});
}

void addAppDirIcon(IconRef &icon, FolderFiles &folder, const QByteArray &name) {
    constexpr const char *kAnyName = ".DirIcon";
    setThemeName(icon, stringWithFileSystemRepresentation(name));
    if (name.isEmpty())
        addFile(icon, folder, {kAnyName});
    else
        addFile(icon, folder, {name + ".svg", name + ".png", kAnyName});
}

bool hasBundleName(const IconItem &item) {
    return lowerExtensionOf(PathParts(item.path).name) == "app";
}

/// Rules out nearly all other folders with one system call.
bool mayBeApplication(const IconItem &item) {
    struct stat found = {};
    return hasBundleName(item) ||
           fstatat(item.folder.number(), kAppRun, &found, AT_SYMLINK_NOFOLLOW) == 0;
}

} // namespace

void addApplicationIcon(const IconItem &item, IconRef &icon) {
    if (!mayBeApplication(item))
        return;
    FolderFiles folder(item.path);
    auto application = hasBundleName(item) ? bundleIn(folder) : std::nullopt;
    if (!application)
        application = appDirIn(folder, item.folder);
    if (!application)
        return;
    icon = themeIcon("application-x-executable", kFileDrawing);
    const auto add = application->isAppDir ? addAppDirIcon : addBundleIcon;
    add(icon, folder, application->iconName);
}

} // namespace MWCore
