// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "icons/IconFamily.h"

#include "platform/workspace/Pasteboard.h"

#include <algorithm>
#include <iterator>

namespace MWCore {
namespace {

/// The types that hold a family, in the order in which they are offered and looked for. Programs of
/// this desktop use the last one (shared-mime-info).
QStringList familyTypes() {
    return {QStringLiteral("com.apple.icns"),
            QStringLiteral("'icns' (CorePasteboardFlavorType 0x69636E73)"),
            QStringLiteral("image/x-icns")};
}

} // namespace

bool IconFamily::canInitWithScrap() {
    const QStringList types = Pasteboard::types();
    return std::ranges::any_of(familyTypes(),
                               [&types](const QString &type) { return types.contains(type); });
}

IconFamily::Ptr IconFamily::initWithScrap() {
    for (const QString &type : familyTypes())
        if (const auto data = Pasteboard::data(type))
            return initWithData(*data);
    return {};
}

bool IconFamily::putOnScrap() const {
    std::vector<std::pair<QString, QByteArray>> contents;
    for (const QString &type : familyTypes())
        contents.emplace_back(type, hIconFamily_);
    Pasteboard::set(contents);
    return true;
}

} // namespace MWCore
