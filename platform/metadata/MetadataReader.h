// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/metadata/ExtendedAttributes.h"
#include "platform/metadata/MetadataStore.h"
#include "platform/metadata/Sidecar.h"

#include <optional>

#include <QByteArray>

namespace MWCore {

/// Gives several functions access to the metadata of one item. Lists the extended attributes once
/// and opens the sidecar at most once, when it is first needed. Belongs to one thread.
class MetadataReader {
public:
    MetadataReader(const QByteArray &path, Sidecars sidecars)
        : path_(path), names_(path), status_(statusOfNames(path, names_)), sidecars_(sidecars) {}

    [[nodiscard]] const QByteArray &path() const { return path_; }
    [[nodiscard]] const AttributeNames &names() const { return names_; }

    /// noErr if the item's attributes could be listed, else the cause.
    [[nodiscard]] OSStatus status() const { return status_; }

    /// As sidecarEntry() in Sidecar.h. nullopt, with noErr in @p status, if there can be no
    /// sidecar.
    [[nodiscard]] std::optional<SidecarEntry> sidecarEntry(AppleDoubleId id, int64_t limit,
                                                           OSStatus *status);

private:
    QByteArray path_;
    AttributeNames names_;
    OSStatus status_;
    Sidecars sidecars_;
    bool isSidecarOpened_ = false;
    std::optional<OpenSidecar> sidecar_;
    OSStatus sidecarStatus_ = noErr;
};

// As the functions with the same names in MetadataStore.h.
[[nodiscard]] OSStatus readFinderInfo(MetadataReader &reader, FinderInfo *info);
[[nodiscard]] OSStatus resourceForkSize(MetadataReader &reader, ForkSize *size);

} // namespace MWCore
