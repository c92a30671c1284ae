// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/themes/IconFileList.h"

#include "platform/files/FolderBlock.h"

#include <algorithm>
#include <iterator>
#include <tuple>

#include <dirent.h>

namespace MWCore {

void IconFileList::addFolder(int descriptor, uint32_t folder) {
    FolderBlock block;
    auto outcome = FolderBlock::Outcome::MoreLeft;
    while (outcome == FolderBlock::Outcome::MoreLeft && namesLeft_ > 0) {
        outcome = block.fill(descriptor);
        for (const dirent64 &entry : block)
            add(entry, folder);
    }
}

void IconFileList::add(const dirent64 &entry, uint32_t folder) {
    const QByteArrayView whole(entry.d_name);
    const auto *const extension = std::ranges::find_if(
        kExtensions, [whole](QByteArrayView one) { return whole.endsWith(one); });
    const bool isCertain = entry.d_type == DT_REG;
    const bool mayBeFile = isCertain || entry.d_type == DT_LNK || entry.d_type == DT_UNKNOWN;
    if (--namesLeft_ < 0 || extension == std::end(kExtensions) || !mayBeFile)
        return;
    const QByteArrayView name = whole.chopped(extension->size());
    files_.push_back({static_cast<uint32_t>(names_.size()), folder,
                      static_cast<uint8_t>(name.size()),
                      static_cast<uint8_t>(extension - std::begin(kExtensions)), isCertain});
    names_ += name;
}

void IconFileList::sort() {
    std::ranges::sort(files_, [this](const File &one, const File &other) {
        return std::tuple(nameOf(one), one.folder, one.extension) <
               std::tuple(nameOf(other), other.folder, other.extension);
    });
    names_.squeeze();
    files_.shrink_to_fit();
}

std::span<const IconFileList::File> IconFileList::filesNamed(QByteArrayView icon) const {
    const auto name = [this](const File &file) { return nameOf(file); };
    return {std::ranges::lower_bound(files_, icon, {}, name),
            std::ranges::upper_bound(files_, icon, {}, name)};
}

} // namespace MWCore
