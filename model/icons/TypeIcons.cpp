// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/icons/TypeIcons.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace MWCore {
namespace {

constexpr qsizetype kMostTypes = 256;
constexpr qsizetype kLongestExtension = 16;
/// Each of these files has the icon of the program that it starts.
constexpr QStringView kStarters[] = {u"desktop", u"appimage"};

bool isTypical(const QString &extension) {
    return !extension.isEmpty() && extension.size() <= kLongestExtension &&
           std::ranges::find(kStarters, extension) == std::end(kStarters);
}

IconRef withoutOwnPictures(IconRef icon) {
    icon.customIconOf.clear();
    icon.file.clear();
    icon.thumbnailOf.clear();
    icon.version = 0;
    return icon;
}

} // namespace

void TypeIcons::learn(const QString &extension, const ItemIcon &icon) {
    if (!isTypical(extension))
        return;
    IconRef type = withoutOwnPictures(icon.description());
    if (const auto known = find(extension); known && known->description() == type)
        return;
    if (icons_.size() >= kMostTypes)
        icons_.clear();
    icons_.insert(extension, ItemIcon::init(std::move(type)));
}

ItemIcon::Ptr TypeIcons::find(const QString &extension) const {
    return icons_.value(extension);
}

} // namespace MWCore
