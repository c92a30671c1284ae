// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// Names, paths and the fields of the record.
#include "model/item/ItemState.h"
#include "model/item/MXFileSystemObject.h"
#include "model/listing/ListedTree.h"
#include "platform/aliases/FileUrl.h"
#include "platform/files/PathParts.h"
#include "platform/files/UserAccount.h"
#include "platform/foundation/FileSystemText.h"

#include <algorithm>

#include <sys/stat.h>

namespace MWCore {
namespace {

/// A path split as desktops do: the last component of "/" is "/", and trailing slashes, also those
/// of the parent, are ignored.
struct PathText {
    QStringView parent; ///< "" if the path is only a name
    QStringView name;

    explicit PathText(QStringView path) {
        while (path.size() > 1 && path.endsWith(u'/'))
            path.chop(1);
        const qsizetype slash = path.lastIndexOf(u'/');
        name = path == u"/" ? path : path.sliced(slash + 1);
        parent = path.first(std::max<qsizetype>(slash, path.startsWith(u'/') ? 1 : 0));
        while (parent.size() > 1 && parent.endsWith(u'/'))
            parent.chop(1);
    }
};

/// The index of the extension's dot in a name, or the name's length if it has no extension.
qsizetype extensionDot(QStringView name) {
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot > 0 ? dot : name.size();
}

/// Empty for an empty path.
QByteArray urlOf(const QByteArray &path) {
    return path.isEmpty() ? QByteArray() : fileUrl(absolutePath(path));
}

MXNodeKind nodeKindAt(const QByteArray &path) {
    struct Row {
        mode_t type;
        MXNodeKind kind;
    };
    static constexpr Row kRows[] = {
        {S_IFDIR, MXNodeKind::Folder},
        {S_IFREG, MXNodeKind::File},
        {S_IFLNK, MXNodeKind::Link},
        {S_IFIFO, MXNodeKind::Fifo},
        {S_IFSOCK, MXNodeKind::Socket},
        {S_IFBLK, MXNodeKind::BlockDevice},
        {S_IFCHR, MXNodeKind::CharacterDevice},
    };
    struct stat item = {};
    if (lstat(path.constData(), &item) != 0)
        return MXNodeKind::Unknown;
    const auto *const row = std::ranges::find(kRows, item.st_mode & S_IFMT, &Row::type);
    return row == std::end(kRows) ? MXNodeKind::Unknown : row->kind;
}

/// The URL of a local item.
class FileURLObject : public MXURLObject {
public:
    explicit FileURLObject(const QByteArray &url) : url_(QString::fromLatin1(url)) {}

    [[nodiscard]] QString urlAsString() const override { return url_; }
    [[nodiscard]] QString urlWithoutPath() const override { return QStringLiteral("file://"); }
    [[nodiscard]] QString urlAsCleanString() const override { return url_; }

private:
    QString url_;
};

} // namespace

bool MXFileSystemObject::hasCustomPath() const {
    return rareTexts_ && !rareTexts_->completePath.isNull();
}

QString MXFileSystemObject::completePath() const {
    if (hasCustomPath())
        return rareTexts_->completePath;
    return record_ ? stringWithFileSystemRepresentation(record_->complete_path) : QString();
}

void MXFileSystemObject::setCompletePath(const QString &path) {
    rareTexts().completePath = path;
}

QByteArray MXFileSystemObject::pathBytes() const {
    if (hasCustomPath())
        return fileSystemRepresentation(rareTexts_->completePath).value_or(QByteArray());
    return record_ ? QByteArray(record_->complete_path) : QByteArray();
}

QString MXFileSystemObject::name() const {
    if (isVolume()) {
        QString &cached = rareTexts().volumeName;
        return cached.isNull() ? cached = volumeName() : cached;
    }
    if (hasCustomPath())
        return PathText(rareTexts_->completePath).name.toString();
    return stringWithFileSystemRepresentation(recordName());
}

/// The last component of the record's path, whose bytes belong to the record; null without one.
QByteArrayView MXFileSystemObject::recordName() const {
    if (isListedChild())
        return record_->name;
    QByteArrayView path(record_ ? record_->complete_path : nullptr);
    while (path.size() > 1 && path.endsWith('/'))
        path.chop(1);
    return path.size() == 1 ? path : path.sliced(path.lastIndexOf('/') + 1);
}

/// name() in file-system representation; may share the record's bytes.
QByteArray MXFileSystemObject::nameBytes() const {
    if (isVolume() || hasCustomPath())
        return cString(name());
    const QByteArrayView name = recordName();
    return QByteArray::fromRawData(name.data(), name.size());
}

QString MXFileSystemObject::nameWithoutExtension() const {
    QString whole = name();
    if (!isVolume())
        whole.truncate(extensionDot(whole));
    return whole;
}

bool MXFileSystemObject::nameStartsWithADot() const {
    return name().startsWith(u'.');
}

QString MXFileSystemObject::extension() const {
    return _fso_get_string_for_attribute(MFS_KEY_EXTENSION);
}

QString MXFileSystemObject::extensionReal() const {
    const QString path = completePath();
    if (path.isNull())
        return {};
    const QStringView last = PathText(path).name;
    return last.sliced(std::min(extensionDot(last) + 1, last.size())).toString();
}

QString MXFileSystemObject::parentPath() const {
    const QString path = completePath();
    return path.isNull() ? QString() : PathText(path).parent.toString();
}

MXFileSystemObject::Ptr MXFileSystemObject::parent() const {
    mfs_fso *const folder = record_ ? mfs_fso_parent(record_) : nullptr;
    return folder ? newFSOWithCStruct(folder, this) : Ptr();
}

bool MXFileSystemObject::isRoot() const {
    return completePath() == u"/";
}

std::unique_ptr<MXURLObject> MXFileSystemObject::urlObject() const {
    return std::make_unique<FileURLObject>(urlOf(pathBytes()));
}

QString MXFileSystemObject::url() const {
    const auto object = urlObject();
    return object ? object->urlAsString() : QString();
}

QString MXFileSystemObject::urlWithoutPath() const {
    const auto object = urlObject();
    return object ? object->urlWithoutPath() : QString();
}

QString MXFileSystemObject::cleanURL() const {
    const auto object = urlObject();
    return object ? object->urlAsCleanString() : QString();
}

QUrl MXFileSystemObject::previewItemURL() const {
    return QUrl::fromEncoded(urlOf(pathBytes()), QUrl::StrictMode);
}

QString MXFileSystemObject::owner() const {
    if (rareTexts_ && !rareTexts_->owner.isNull())
        return rareTexts_->owner;
    return _fso_get_string_for_attribute(MFS_KEY_OWNER);
}

void MXFileSystemObject::setOwner(const QString &owner) {
    rareTexts().owner = owner;
}

QString MXFileSystemObject::group() const {
    if (rareTexts_ && !rareTexts_->group.isNull())
        return rareTexts_->group;
    return _fso_get_string_for_attribute(MFS_KEY_GROUP);
}

void MXFileSystemObject::setGroup(const QString &group) {
    rareTexts().group = group;
}

bool MXFileSystemObject::ownedByCurrentUser() const {
    return owner() == currentUserName();
}

int32_t MXFileSystemObject::links() const {
    return _fso_get_int_for_attribute(MFS_KEY_LINKS);
}

int32_t MXFileSystemObject::subFolderCount() const {
    return record_ ? mfs_fso_subdirectory_count(record_) : 0;
}

MXNodeKind MXFileSystemObject::nodeKind() const {
    switch (record_ ? record_->type : int32_t(MFS_TYPE_OTHER)) {
    case MFS_TYPE_DIRECTORY:
        return MXNodeKind::Folder;
    case MFS_TYPE_FILE:
        return MXNodeKind::File;
    case MFS_TYPE_LINK:
        return MXNodeKind::Link;
    default:
        return isLocal() ? nodeKindAt(pathBytes()) : MXNodeKind::Unknown;
    }
}

QString MXFileSystemObject::resolvedLinkTarget() const {
    const char *const target = record_ ? record_->alias_location : nullptr;
    return target && *target == '/' ? stringWithFileSystemRepresentation(target) : QString();
}

QString MXFileSystemObject::date() const {
    if (date_.isNull())
        date_ = _fso_get_string_for_attribute(MFS_KEY_DATE_MODIFIED);
    return date_;
}

QString MXFileSystemObject::getObjectForKey(const QString &key) const {
    struct Row {
        QLatin1String key;
        QString (MXFileSystemObject::*value)() const;
    };
    static constexpr Row kRows[] = {
        {QLatin1String("NAME"), &MXFileSystemObject::name},
        {QLatin1String("DATE"), &MXFileSystemObject::date},
        {QLatin1String("USER"), &MXFileSystemObject::owner},
        {QLatin1String("GROUP"), &MXFileSystemObject::group},
        {QLatin1String("PERMISSIONS"), &MXFileSystemObject::permissionsAsString},
    };
    const auto *const row = std::ranges::find(kRows, key, &Row::key);
    return row == std::end(kRows) ? QString() : (this->*row->value)();
}

} // namespace MWCore
