// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/metadata/ExtendedAttributes.h"
#include "platform/metadata/MetadataStore.h"
#include "platform/metadata/Sidecar.h"

#include <optional>

#include <QByteArray>

namespace MWCore {

/// What is kept of one item, for several readers: its extended attributes are listed once, and its
/// sidecar is opened once, when the first of them asks for it. Belongs to one thread.
class MetadataReader {
public:
    MetadataReader(const QByteArray &path, Sidecars sidecars)
        : path_(path), names_(path), status_(statusOfNames(path, names_)), sidecars_(sidecars) {}

    [[nodiscard]] const QByteArray &path() const { return path_; }
    [[nodiscard]] const AttributeNames &names() const { return names_; }

    /// noErr where metadata of the item can be looked for, else why not.
    [[nodiscard]] OSStatus status() const { return status_; }

    /// As sidecarEntry() in Sidecar.h; nothing, with noErr, where no sidecar can be.
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

// As the functions of these names in MetadataStore.h.
[[nodiscard]] OSStatus readFinderInfo(MetadataReader &look, FinderInfo *info);
[[nodiscard]] OSStatus resourceForkSize(MetadataReader &look, ForkSize *size);

} // namespace MWCore
