// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/UserDefaults.h"

#include "core/posix/Descriptor.h"
#include "platform/files/TrustedFolder.h"
#include "platform/foundation/FileSizeSignal.h"
#include "platform/foundation/FileSystemText.h"
#include "platform/foundation/Log.h"

#include <cerrno>

#include <QCoreApplication>
#include <QDataStream>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace MWCore {
namespace {

/// The names by which QSettings finds the file.
struct HostNames {
    QString organization;
    QString application;
};

HostNames hostNames() {
    const QString organization = QCoreApplication::organizationName();
    QString application = QCoreApplication::applicationName();
    if (application.isEmpty())
        application = QString::fromLocal8Bit(program_invocation_short_name);
    return organization.isEmpty() ? HostNames{application, {}}
                                  : HostNames{organization, application};
}

/// QSettings follows links when it writes. Where others can create links, as in a home folder that
/// is not the superuser's own, the superuser has no settings.
QSettings openedSettings() {
    const HostNames names = hostNames();
    const QSettings usual(QSettings::defaultFormat(), QSettings::UserScope, names.organization,
                          names.application);
    const auto file = fileSystemRepresentation(usual.fileName());
    constexpr const char *kNowhere = "/proc/self/no settings";
    if (geteuid() == 0 && (!file || !isSafeFromOthers(*file)))
        return {kNowhere, QSettings::IniFormat};
    return {QSettings::defaultFormat(), QSettings::UserScope, names.organization,
            names.application};
}

/// The key in a form that QSettings can store: it groups keys by "/" and takes no empty key.
QString settingsKey(const QString &key) {
    if (key.isEmpty())
        return QStringLiteral("%");
    QString escaped = key;
    escaped.replace(u'%', QLatin1String("%25"));
    escaped.replace(u'/', QLatin1String("%2F"));
    return escaped;
}

/// An unpaired surrogate would be lost in the file; the byte that it carries is not.
QVariant storable(const QVariant &value) {
    if (value.typeId() != QMetaType::QString || value.toString().isValidUtf16())
        return value;
    const auto bytes = fileSystemRepresentation(value.toString());
    return bytes ? QVariant(*bytes) : value;
}

/// The deepest existing folder on the path of @p file.
QString existingFolderOf(const QString &file) {
    QFileInfo folder(QFileInfo(file).path());
    while (!folder.exists() && !folder.isRoot())
        folder.setFile(folder.path());
    return folder.filePath();
}

template <typename Type> Type converted(QVariant found, const Type &byDefault) {
    return found.convert(QMetaType::fromType<Type>()) ? found.value<Type>() : byDefault;
}

} // namespace

UserDefaults::UserDefaults() : settings_(openedSettings()) {}

UserDefaults::~UserDefaults() {
    if (!changes_.isEmpty() && synchronize() != QSettings::NoError)
        qCWarning(mwcoreLog) << "Settings cannot be written to" << settings_.fileName();
}

bool UserDefaults::contains(const QString &key) const {
    const auto changed = changes_.constFind(settingsKey(key));
    return changed == changes_.cend() ? settings_.contains(settingsKey(key)) : changed->isValid();
}

QVariant UserDefaults::value(const QString &key) const {
    const auto changed = changes_.constFind(settingsKey(key));
    return changed == changes_.cend() ? settings_.value(settingsKey(key)) : *changed;
}

void UserDefaults::setValue(const QString &key, const QVariant &value) {
    changes_.insert(settingsKey(key), storable(value));
}

void UserDefaults::remove(const QString &key) {
    setValue(key, {});
}

QString UserDefaults::text(const QString &key, const QString &byDefault) const {
    const QVariant found = value(key);
    if (found.typeId() == QMetaType::QByteArray)
        return stringWithFileSystemRepresentation(found.toByteArray());
    return converted(found, byDefault);
}

qint64 UserDefaults::integer(const QString &key, qint64 byDefault) const {
    return converted(value(key), byDefault);
}

double UserDefaults::real(const QString &key, double byDefault) const {
    return converted(value(key), byDefault);
}

bool UserDefaults::boolean(const QString &key, bool byDefault) const {
    return converted(value(key), byDefault);
}

QByteArray UserDefaults::bytes(const QString &key, const QByteArray &byDefault) const {
    return converted(value(key), byDefault);
}

/// Whether the disk has room for a file with the changes. QSettings would not notice if it had
/// none, and would replace all settings with what it could write.
bool UserDefaults::hasRoom() const {
    QByteArray changed;
    QDataStream stream(&changed, QIODevice::WriteOnly);
    stream << changes_;
    constexpr qint64 kLongestEscape = 6; // bytes per character
    constexpr qint64 kMore = 65536;
    const qint64 length = QFileInfo(settings_.fileName()).size() + changed.size() * kLongestEscape;
    const auto folder = fileSystemRepresentation(existingFolderOf(settings_.fileName()));
    const Descriptor trial(
        folder ? open(folder->constData(), O_TMPFILE | O_WRONLY | O_CLOEXEC, S_IRUSR) : -1);
    return !trial || posix_fallocate(trial.number(), 0, length + kMore) == 0;
}

QSettings::Status UserDefaults::synchronize() {
    const FileSizeSignalBlocked noSignal;
    if (!changes_.isEmpty() && !hasRoom())
        return QSettings::AccessError;
    for (auto change = changes_.cbegin(); change != changes_.cend(); ++change)
        change->isValid() ? settings_.setValue(change.key(), *change)
                          : settings_.remove(change.key());
    changes_.clear();
    settings_.sync();
    return settings_.status();
}

} // namespace MWCore
