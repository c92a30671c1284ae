// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/metadata/MetadataReader.h"

#include <utility>

namespace MWCore {

std::optional<SidecarEntry> MetadataReader::sidecarEntry(AppleDoubleId id, int64_t limit,
                                                         OSStatus *status) {
    if (sidecars_ == Sidecars::MayExist && !std::exchange(isSidecarOpened_, true))
        sidecar_ = openSidecar(path_, &sidecarStatus_);
    *status = sidecarStatus_;
    return sidecar_ ? MWCore::sidecarEntry(*sidecar_, id, limit, status) : std::nullopt;
}

} // namespace MWCore
