// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// The kind of an item, and the targets of links and aliases.
#include "core/posix/stat_fields.h"
#include "core/record_type.h"
#include "model/item/MXFileSystemObject.h"
#include "model/listing/Classification.h"
#include "model/listing/ListedTree.h"
#include "platform/aliases/Aliases.h"
#include "platform/files/DescriptorPath.h"
#include "platform/files/RegularFile.h"
#include "platform/foundation/FileSystemText.h"
#include "platform/foundation/Log.h"
#include "platform/launch/Bundle.h"
#include "platform/launch/LaunchServices.h"

#include <algorithm>
#include <array>

#include <fcntl.h>
#include <sys/stat.h>

#include <QImageReader>

namespace MWCore {
namespace {

/// From stat(2) and lstat(2); nullopt if the item does not exist or is a broken link.
std::optional<ItemFacts> factsAt(const QByteArray &path) {
    struct stat target = {};
    struct stat item = {};
    if (stat(path.constData(), &target) != 0 || lstat(path.constData(), &item) != 0)
        return std::nullopt;
    return ItemFacts{.type = recordTypeOf(item.st_mode),
                     .targetType = recordTypeOf(target.st_mode),
                     .isExecutable = hasExecuteBit(item.st_mode)};
}

/// Null if the link cannot be read.
QString textOfLink(const QByteArray &path) {
    const auto text = linkText(AT_FDCWD, path.constData());
    return text ? stringWithFileSystemRepresentation(*text) : QString();
}

QString withoutLastComponent(const QString &path) {
    const qsizetype slash = path.lastIndexOf(u'/');
    return slash == 0 ? QStringLiteral("/") : path.left(std::max<qsizetype>(slash, 0));
}

/// The text of a link in @p folder, made absolute. Only the first leading "../" is resolved, and
/// the result then always has a "/" in its place.
QString linkTarget(const QString &text, const QString &folder) {
    if (text.startsWith(u'/'))
        return text;
    if (text.startsWith(u"../"))
        return withoutLastComponent(folder) + u'/' + text.sliced(3);
    const QString rest = text.startsWith(u"./") ? text.sliced(2) : text;
    return folder == u"/" ? folder + rest : folder + u'/' + rest;
}

} // namespace

MXItemKind MXFileSystemObject::typeForItemAtPath(const QString &path, MXItemKind *typeWePointTo,
                                                 bool *isPackaged) {
    const auto bytes = fileSystemRepresentation(path);
    const auto facts = bytes ? factsAt(*bytes) : std::nullopt;
    if (!facts)
        return MXItemKindUnknown;
    InspectionContext inspection(InspectionContext::Extent::OneItem);
    const Classification result = classify(*bytes, *facts, inspection);
    if (isPackaged)
        *isPackaged = result.isPackaged;
    if (typeWePointTo && (result.kind == MXItemKindLink || result.kind == MXItemKindAlias))
        *typeWePointTo = result.targetKind;
    return result.kind;
}

void MXFileSystemObject::identify() {
    bool isPackaged = false;
    kind_ = typeForItemAtPath(completePath(), &targetKind_, &isPackaged);
    setApplicationIsPackaged(isPackaged);
}

/// As identify(), with the result of a listing.
void MXFileSystemObject::identifyAs(const Classification &classification) {
    kind_ = classification.kind;
    if (kind_ == MXItemKindLink || kind_ == MXItemKindAlias)
        targetKind_ = classification.targetKind;
    setApplicationIsPackaged(classification.isPackaged);
    unflaggedState_ = classification.unflaggedState;
}

bool MXFileSystemObject::isDir() const {
    return (isLocal() && kind_ == MXItemKindFolder) || mfs_fso_isDir(record_) != 0;
}

bool MXFileSystemObject::isLink() const {
    return isLocal() ? kind_ == MXItemKindLink : mfs_fso_isLink(record_) != 0;
}

bool MXFileSystemObject::isFile() const {
    return isLocal() ? kind_ == MXItemKindFile : mfs_fso_isFile(record_) != 0;
}

bool MXFileSystemObject::isBrokenLink() const {
    return isSymbolicLink() && record_->target_type == MFS_TARGET_UNKNOWN;
}

bool MXFileSystemObject::isPackagedApplication() const {
    return isApplication() && isApplicationPackaged();
}

QString MXFileSystemObject::kindAsString() const {
    return isRemote() ? QStringLiteral("Remote File") : LSCopyKindString(pathBytes());
}

QString MXFileSystemObject::aliasOrLinkTargetPath() const {
    if (isAlias())
        return private_resolveAliasPath(completePath());
    if (!isLink())
        return {};
    if (isLocal())
        return linkTarget(textOfLink(pathBytes()), parentPath());
    QString target = _fso_get_string_for_attribute(MFS_KEY_COMPLETE_ALIAS_PATH);
    qCWarning(mwcoreLog).noquote() << "Alias points to :" << target;
    return target;
}

bool MXFileSystemObject::aliasOrLinkTargetIsInvalid() const {
    return aliasOrLinkTargetPath().isNull();
}

bool MXFileSystemObject::isGraphicFile() const {
    enum : int8_t { NotDecided, Graphic, NotGraphic };
    if (!isFile())
        return false;
    if (detectedTypeGraphic_ == NotDecided) {
        static const QList<QByteArray> formats = QImageReader::supportedImageFormats();
        detectedTypeGraphic_ = formats.contains(cString(extension())) ? Graphic : NotGraphic;
    }
    return detectedTypeGraphic_ == Graphic;
}

bool MXFileSystemObject::isCarbonApplication() const {
    constexpr QByteArrayView kFragmentMark = "Joy!";
    QByteArray file = isLocal() ? pathBytes() : QByteArray();
    if (isPackagedApplication()) {
        const auto bundle = Bundle::open(file);
        file = bundle ? bundle->executablePath() : QByteArray();
    }
    OSStatus status = noErr;
    const auto start = readStartOf(file, kFragmentMark.size(), FinalLink::Follow, &status);
    return start && *start == kFragmentMark;
}

QString MXFileSystemObject::private_resolveAliasPath(const QString &path) {
    const auto bytes = fileSystemRepresentation(path);
    FSRef ref;
    bool isAlias = false;
    bool targetIsFolder = false;
    if (!bytes || FSPathMakeRef(*bytes, &ref) != noErr ||
        FSResolveAliasFile(&ref, AliasSteps::All, &targetIsFolder, &isAlias) != noErr || !isAlias)
        return path;
    return stringWithFileSystemRepresentation(ref.path);
}

QString MXFileSystemObject::resolveAliasPath(const QString &path) {
    return private_resolveAliasPath(path);
}

QString MXFileSystemObject::resolveAliasFromFileAtPath(const QString &path) {
    return path.isNull() ? QString() : private_resolveAliasPath(path);
}

} // namespace MWCore
