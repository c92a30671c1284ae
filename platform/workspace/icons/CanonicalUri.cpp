// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/icons/CanonicalUri.h"

#include "platform/files/PathParts.h"

#include <QCryptographicHash>

namespace MWCore {
namespace {

/// Besides letters, digits and "-._~".
constexpr const char *kUnescaped = "/!$&'()*+,:=@";

bool isCanonical(const QByteArray &path) {
    return !path.contains("//") && !path.contains("/.") && (path.size() < 2 || !path.endsWith('/'));
}

QByteArray canonical(const QByteArray &path) {
    QList<QByteArray> names;
    for (const QByteArray &name : namesOf(path)) {
        if (!isDots(name))
            names.append(name);
        else if (name == ".." && !names.isEmpty())
            names.removeLast();
    }
    return '/' + names.join('/');
}

} // namespace

QByteArray canonicalUri(const QByteArray &path) {
    const QByteArray plain = isCanonical(path) ? path : canonical(path);
    return "file://" + plain.toPercentEncoding(kUnescaped);
}

QByteArray uriDigest(const QByteArray &uri) {
    return QCryptographicHash::hash(uri, QCryptographicHash::Md5).toHex();
}

} // namespace MWCore
