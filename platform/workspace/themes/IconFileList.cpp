// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/workspace/themes/IconFileList.h"

#include "platform/files/FolderBlock.h"

#include <algorithm>
#include <iterator>
#include <numeric>
#include <utility>

#include <QHashFunctions>

#include <dirent.h>

namespace MWCore {
namespace {

constexpr std::size_t kFewestSlots = 256;

/// Nearly full tables are slow to search.
bool isCrowded(std::size_t icons, std::size_t slotCount) {
    return icons * 5 >= slotCount * 4;
}

} // namespace

void IconFileList::addFolder(int descriptor, uint16_t folder) {
    FolderBlock block;
    auto outcome = FolderBlock::Outcome::MoreLeft;
    while (outcome == FolderBlock::Outcome::MoreLeft && namesLeft_ > 0) {
        outcome = block.fill(descriptor);
        for (const dirent64 &entry : block)
            add(entry, folder);
    }
}

void IconFileList::add(const dirent64 &entry, uint16_t folder) {
    const QByteArrayView whole(entry.d_name);
    const auto *const extension = std::ranges::find_if(
        kExtensions, [whole](QByteArrayView one) { return whole.endsWith(one); });
    const bool isFile = entry.d_type == DT_REG;
    const bool mayBeFile = isFile || entry.d_type == DT_LNK || entry.d_type == DT_UNKNOWN;
    if (--namesLeft_ < 0 || extension == std::end(kExtensions) || !mayBeFile)
        return;
    const uint32_t icon = iconNamed(whole.chopped(extension->size()));
    const auto index = static_cast<uint8_t>(extension - std::begin(kExtensions));
    added_.push_back({icon, {folder, index, isFile ? Kind::File : Kind::Link}});
}

QByteArrayView IconFileList::nameOf(uint32_t icon) const {
    const uint32_t begin = icon == 0 ? 0 : nameEnds_[icon - 1];
    return QByteArrayView(names_).sliced(begin, nameEnds_[icon] - begin);
}

/// The slot that holds the icon, or the empty one that is to hold it.
std::size_t IconFileList::slotOf(QByteArrayView name) const {
    const std::size_t mask = slots_.size() - 1;
    std::size_t slot = qHash(name) & mask;
    while (slots_[slot] != 0 && nameOf(slots_[slot] - 1) != name)
        slot = (slot + 1) & mask;
    return slot;
}

void IconFileList::enlargeTable() {
    slots_.assign(std::max(kFewestSlots, slots_.size() * 2), 0);
    for (uint32_t icon = 0; icon < iconCount(); ++icon)
        slots_[slotOf(nameOf(icon))] = icon + 1;
}

uint32_t IconFileList::iconNamed(QByteArrayView name) {
    if (isCrowded(iconCount(), slots_.size()))
        enlargeTable();
    uint32_t &slot = slots_[slotOf(name)];
    if (slot == 0) {
        names_.append(name);
        nameEnds_.push_back(static_cast<uint32_t>(names_.size()));
        slot = iconCount();
    }
    return slot - 1;
}

void IconFileList::finish() {
    firstFiles_.assign(iconCount() + 1, 0);
    for (const NamedFile &added : added_)
        ++firstFiles_[added.icon + 1];
    std::partial_sum(firstFiles_.begin(), firstFiles_.end(), firstFiles_.begin());
    files_.resize(added_.size());
    auto next = firstFiles_;
    for (const NamedFile &added : std::exchange(added_, {}))
        files_[next[added.icon]++] = added.file;
    for (uint32_t icon = 0; icon < iconCount(); ++icon)
        std::sort(files_.begin() + firstFiles_[icon], files_.begin() + firstFiles_[icon + 1],
                  [](const File &one, const File &other) {
                      return std::pair(one.folder, one.extension) <
                             std::pair(other.folder, other.extension);
                  });
    names_.squeeze();
    nameEnds_.shrink_to_fit();
}

std::span<IconFileList::File> IconFileList::filesNamed(QByteArrayView icon) {
    const uint32_t found = slots_.empty() ? 0 : slots_[slotOf(icon)];
    if (found == 0)
        return {};
    return std::span(files_).subspan(firstFiles_[found - 1],
                                     firstFiles_[found] - firstFiles_[found - 1]);
}

} // namespace MWCore
