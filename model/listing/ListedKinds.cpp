// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "model/listing/ListedKinds.h"

#include "core/posix/stat_fields.h"
#include "platform/launch/ItemStatus.h"

namespace MWCore {
namespace {

int64_t nanoseconds(const timespec &time) {
    constexpr int64_t kSecond = 1'000'000'000;
    return time.tv_sec * kSecond + time.tv_nsec;
}

} // namespace

Classification ListedKinds::kindOf(const mfs_fso &child, Sidecars sidecars,
                                   uint64_t inodeState) const {
    const QByteArrayView path = child.complete_path;
    return classify(QByteArray::fromRawData(path.data(), path.size()),
                    {.type = child.type,
                     .targetType = child.target_type,
                     .isExecutable = hasExecuteBit(child.mode),
                     .sidecars = sidecars,
                     .inodeState = inodeState},
                    inspection_);
}

void ListedKinds::visit(void *self, const mfs_fso *child, const struct stat *item,
                        int32_t index) noexcept {
    auto *const kinds = static_cast<ListedKinds *>(self);
    if (index == 0)
        kinds->reset();
    kinds->add(*child, *item);
}

/// The time already used is not given back.
void ListedKinds::reset() {
    files_.clear();
    subdirectories_.clear();
    sidecars_.clear();
}

void ListedKinds::add(const mfs_fso &child, const struct stat &item) {
    sidecars_.add(child.name);
    const uint64_t state = nanoseconds(item.st_ctim) < begin_ ? inodeState(item) : 0;
    // Sidecars may follow in the listing; of() considers them.
    (mfs_fso_isDir(&child) ? subdirectories_ : files_)
        .push_back(kindOf(child, Sidecars::Absent, state));
}

Classification ListedKinds::of(const mfs_fso *child, int32_t index) const {
    const Sidecars sidecars = sidecars_.of(child->name);
    if (sidecars == Sidecars::MayExist && inspection_.timeBudget.isLeft())
        return kindOf(*child, sidecars);
    const auto at = static_cast<std::size_t>(index);
    return mfs_fso_isDir(child) ? subdirectories_[at] : files_[at];
}

} // namespace MWCore
