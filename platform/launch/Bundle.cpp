// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/launch/Bundle.h"

#include "platform/files/PathParts.h"
#include "platform/files/RegularFile.h"
#include "platform/formats/DesktopEntry.h"
#include "platform/formats/PropertyList.h"
#include "platform/foundation/FileSystemText.h"
#include "platform/launch/ApplicationFolder.h"

namespace MWCore {
namespace {

constexpr int64_t kDescriptionLimit = 1'000'000; // bytes; real ones have some 10,000

struct LayoutRow {
    const char *list;             ///< the property list in the bundle
    const char *executableFolder; ///< where its executables are
};
constexpr LayoutRow kLayoutRows[] = {
    {"/Contents/Info.plist", "/Contents/MacOS"},
    {"/Info.plist", ""},
};

struct KeyRow {
    const char *entryKey;
    const char *listKey;
};
/// If two rows have the same listKey, the first one with a value counts.
constexpr KeyRow kKeyRows[] = {
    {"Name", "CFBundleName"},
    {"Icon", "CFBundleIconFile"},
    {"X-AppImage-Version", "CFBundleShortVersionString"},
    {"X-AppImage-Version", "CFBundleGetInfoString"},
    {"Comment", "CFBundleGetInfoString"},
};

std::optional<QByteArray> read(const QByteArray &path) {
    OSStatus status = noErr;
    return readRegularFile(path, kDescriptionLimit, FinalLink::Follow, &status);
}

std::optional<QVariantMap> readList(const QByteArray &path) {
    const auto bytes = read(path);
    const QVariant list = bytes ? readPropertyList(*bytes) : QVariant();
    if (list.typeId() != QMetaType::QVariantMap)
        return std::nullopt;
    return list.toMap();
}

/// The identifier of a desktop entry is its name without the extension.
std::optional<QVariantMap> readAppDir(const QByteArray &folder) {
    const auto entryPath = appDirEntryPath(folder);
    const auto bytes = entryPath ? read(*entryPath) : std::nullopt;
    if (!bytes)
        return std::nullopt;
    const DesktopEntry entry(*bytes);
    QVariantMap dictionary = {
        {"CFBundleIdentifier",
         stringWithFileSystemRepresentation(withoutExtension(PathParts(*entryPath).name))},
        {"CFBundlePackageType", "APPL"},
    };
    for (const KeyRow &row : kKeyRows) {
        const auto value = entry.localizedValue(DesktopEntry::kMainGroup, row.entryKey);
        if (value && !dictionary.contains(row.listKey))
            dictionary.insert(row.listKey, *value);
    }
    return dictionary;
}

} // namespace

std::optional<Bundle> Bundle::open(const QByteArray &path) {
    Bundle bundle;
    bundle.path_ = path;
    while (bundle.path_.size() > 1 && bundle.path_.endsWith('/'))
        bundle.path_.chop(1);
    for (const LayoutRow &row : kLayoutRows) {
        const auto list = readList(bundle.path_ + row.list);
        if (!list)
            continue;
        bundle.infoDictionary_ = *list;
        bundle.executableFolder_ = bundle.path_ + row.executableFolder;
        bundle.isApplication_ =
            &row == kLayoutRows && lowerExtensionOf(PathParts(bundle.path_).name) == "app";
        return bundle;
    }
    const auto description = readAppDir(bundle.path_);
    if (!description)
        return std::nullopt;
    bundle.infoDictionary_ = *description;
    bundle.isApplication_ = true;
    return bundle;
}

QByteArray Bundle::executablePath() const {
    if (executableFolder_.isEmpty())
        return appRunPath(path_);
    const QVariant named = value("CFBundleExecutable");
    const QByteArray name = named.isValid()
                                ? fileSystemRepresentation(named.toString()).value_or(QByteArray())
                                : withoutExtension(PathParts(path_).name);
    const bool isName = !name.isEmpty() && !name.contains('/') && !isDots(name);
    const QByteArray executable = executableFolder_ + '/' + name;
    return isName && isRegularFile(executable) ? executable : QByteArray();
}

} // namespace MWCore
