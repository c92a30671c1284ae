// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/icons/ImagesInUse.h"

#include <QHashFunctions>

namespace MWCore {

std::size_t ImagesInUse::Hash::operator()(const PictureKey &key) const {
    return qHashMulti(0, key.picture, key.pixels);
}

ImagesInUse &ImagesInUse::shared() {
    static auto *const images = new ImagesInUse; // never freed: threads may outlive main()
    return *images;
}

QImage ImagesInUse::find(const PictureKey &key) {
    const std::scoped_lock lock(mutex_);
    const auto found = images_.find(key);
    return found == images_.end() ? QImage() : found->second;
}

void ImagesInUse::insert(const PictureKey &key, const QImage &image) {
    const std::scoped_lock lock(mutex_);
    std::erase_if(images_, [](const auto &entry) { return entry.second.isDetached(); });
    if (!image.isNull())
        images_.insert_or_assign(key, image);
}

} // namespace MWCore
