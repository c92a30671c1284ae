// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/launch/MimeNamePatterns.h"

#include "platform/files/RegularFile.h"
#include "platform/foundation/FileSystemText.h"

#include <algorithm>

#include <QByteArray>
#include <QFileInfo>
#include <QStandardPaths>

namespace MWCore {
namespace {

constexpr int64_t kLongestGlobs = 4'194'304; // bytes; real ones have some 40,000

/// The bytes of a globs2 file (XDG Shared MIME-info Database, 0.21).
std::optional<QByteArray> readGlobs(const QString &folder) {
    OSStatus status = noErr;
    const auto path = fileSystemRepresentation(folder + "/globs2");
    return path ? readRegularFile(*path, kLongestGlobs, FinalLink::Follow, &status) : std::nullopt;
}

/// The pattern in a line "WEIGHT:TYPE:PATTERN[:FLAGS]".
QString patternIn(const QByteArray &line) {
    return QString::fromUtf8(line).section(u':', 2, 2);
}

bool isSuffixPattern(QStringView pattern) {
    return pattern.startsWith(u"*.") && std::ranges::none_of(pattern.sliced(2), [](QChar one) {
               return QStringView(u"*?[\\").contains(one);
           });
}

} // namespace

std::optional<MimeNamePatterns> MimeNamePatterns::read() {
    if (qEnvironmentVariableIsSet("QT_NO_MIME_CACHE"))
        return std::nullopt;
    MimeNamePatterns patterns;
    bool isStandardInstalled = false; // otherwise Qt uses one that is built in
    const QStringList folders = QStandardPaths::locateAll(QStandardPaths::GenericDataLocation,
                                                          "mime", QStandardPaths::LocateDirectory);
    for (const QString &folder : folders) {
        if (!patterns.addFolder(folder))
            return std::nullopt;
        isStandardInstalled |= QFileInfo::exists(folder + "/packages/freedesktop.org.xml");
    }
    patterns.anyOther_ = QRegularExpression(patterns.otherForms_.join(u'|'),
                                            QRegularExpression::CaseInsensitiveOption);
    return isStandardInstalled && patterns.anyOther_.isValid() ? std::optional(patterns)
                                                               : std::nullopt;
}

/// False if Qt reads patterns of the folder from elsewhere.
bool MimeNamePatterns::addFolder(const QString &folder) {
    if (!QFileInfo::exists(folder + "/mime.cache"))
        return !QFileInfo::exists(folder + "/packages");
    const auto globs = readGlobs(folder);
    if (!globs)
        return false;
    for (const QByteArray &line : globs->split('\n'))
        if (!line.isEmpty() && !line.startsWith('#'))
            addPattern(patternIn(line));
    return true;
}

void MimeNamePatterns::addPattern(const QString &pattern) {
    if (isSuffixPattern(pattern))
        mostDots_ = std::max(mostDots_, pattern.count(u'.'));
    else
        otherForms_ += QRegularExpression::wildcardToRegularExpression(pattern);
}

std::optional<QString> MimeNamePatterns::decidingSuffix(const QString &name) const {
    if (anyOther_.match(name).hasMatch())
        return std::nullopt;
    qsizetype start = name.size();
    for (qsizetype dots = 0; dots < mostDots_; ++dots) {
        const qsizetype dot = name.lastIndexOf(u'.', start - 1);
        if (dot < 1 || start < 1)
            break;
        start = dot;
    }
    return name.sliced(start);
}

} // namespace MWCore
