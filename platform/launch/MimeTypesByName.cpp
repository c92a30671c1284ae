// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/launch/MimeTypesByName.h"

#include "platform/foundation/ShortMemo.h"
#include "platform/launch/MimeNamePatterns.h"

#include <memory>
#include <optional>

#include <QMimeDatabase>
#include <QMimeType>

namespace MWCore {
namespace {

// The names of types are stored, not the types: in Qt 6.4 a QMimeType and its copies must not be
// used by several threads at once.
QStringList databaseTypes(const QString &name) {
    QStringList names;
    for (const QMimeType &type : QMimeDatabase().mimeTypesForFileName(name))
        names += type.name();
    return names;
}

std::shared_ptr<const MimeNamePatterns> currentPatterns() {
    using Patterns = std::shared_ptr<const MimeNamePatterns>;
    static auto *const memo = new ShortMemo<int, Patterns>; // never freed: threads outlive main()
    return memo->value(0, [] {
        auto patterns = MimeNamePatterns::read();
        return patterns ? std::make_shared<const MimeNamePatterns>(*std::move(patterns)) : nullptr;
    });
}

} // namespace

QStringList mimeTypesByName(const QString &name) {
    static auto *const memo = new ShortMemo<QString, QStringList>; // never freed, too
    const auto patterns = currentPatterns();
    const auto suffix = patterns ? patterns->decidingSuffix(name) : std::nullopt;
    return suffix ? memo->value(*suffix, [&name] { return databaseTypes(name); })
                  : databaseTypes(name);
}

} // namespace MWCore
