// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/listing/ListedKinds.h"

#include "core/posix/stat_fields.h"
#include "platform/metadata/Sidecar.h"

namespace MWCore {

/// What the listing saw of the item, which is all that its record keeps.
Classification ListedKinds::kindOf(const mfs_fso &child, Sidecars sidecars) const {
    const QByteArrayView path = child.complete_path;
    return classify(QByteArray::fromRawData(path.data(), path.size()),
                    {.type = child.type,
                     .targetType = child.target_type,
                     .isExecutable = hasExecuteBit(child.mode),
                     .sidecars = sidecars},
                    inspection_);
}

void ListedKinds::visit(void *self, const mfs_fso *child, int32_t index) noexcept {
    auto *const kinds = static_cast<ListedKinds *>(self);
    if (index == 0)
        kinds->beginAgain();
    kinds->add(*child);
}

/// What was spent so far stays spent.
void ListedKinds::beginAgain() {
    files_.clear();
    subdirectories_.clear();
    described_.clear();
}

void ListedKinds::add(const mfs_fso &child) {
    const QByteArrayView name = child.name;
    if (isSidecarName(name))
        described_ += name.sliced(kSidecarPrefix.size()).toByteArray();
    // Which items have a sidecar is known when all names are.
    (mfs_fso_isDir(&child) ? subdirectories_ : files_).push_back(kindOf(child, Sidecars::Absent));
}

Classification ListedKinds::of(const mfs_fso *child, int32_t index) const {
    if (!described_.isEmpty() && inspection_.timeBudget.isLeft() &&
        described_.contains(child->name))
        return kindOf(*child, Sidecars::MayExist);
    const auto place = static_cast<std::size_t>(index);
    return mfs_fso_isDir(child) ? subdirectories_[place] : files_[place];
}

} // namespace MWCore
