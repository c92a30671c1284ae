// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/foundation/UserDefaults.h"

#include "platform/foundation/FileSystemText.h"

#include <cerrno>

#include <QCoreApplication>

namespace MWCore {
namespace {

/// What QSettings finds the file by.
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

/// The key as QSettings can have it: "/" would group keys there, and none may be empty.
QString settingsKey(const QString &key) {
    if (key.isEmpty())
        return QStringLiteral("%");
    QString escaped = key;
    escaped.replace(u'%', QLatin1String("%25"));
    escaped.replace(u'/', QLatin1String("%2F"));
    return escaped;
}

/// Half a surrogate pair would not survive the file, but the byte that it carries does.
QVariant storable(const QVariant &value) {
    if (value.typeId() != QMetaType::QString || value.toString().isValidUtf16())
        return value;
    const auto bytes = fileSystemRepresentation(value.toString());
    return bytes ? QVariant(*bytes) : value;
}

template <typename Type> Type converted(QVariant found, const Type &byDefault) {
    return found.convert(QMetaType::fromType<Type>()) ? found.value<Type>() : byDefault;
}

} // namespace

UserDefaults::UserDefaults()
    : settings_(QSettings::defaultFormat(), QSettings::UserScope, hostNames().organization,
                hostNames().application) {}

UserDefaults::~UserDefaults() = default;

bool UserDefaults::contains(const QString &key) const {
    return settings_.contains(settingsKey(key));
}

QVariant UserDefaults::value(const QString &key) const {
    return settings_.value(settingsKey(key));
}

void UserDefaults::setValue(const QString &key, const QVariant &value) {
    if (value.isValid())
        settings_.setValue(settingsKey(key), storable(value));
    else
        remove(key);
}

void UserDefaults::remove(const QString &key) {
    settings_.remove(settingsKey(key));
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

QSettings::Status UserDefaults::synchronize() {
    settings_.sync();
    return settings_.status();
}

} // namespace MWCore
