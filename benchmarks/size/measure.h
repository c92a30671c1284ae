// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "model/item/MXFileSystemObject.h"
#include "platform/foundation/FileSystemText.h"

#include <optional>

/// An object of the folder at @p path without its contents.
inline MWCore::MXFileSystemObject::Ptr folderAt(const char *path) {
    return MWCore::MXFileSystemObject::newFSOForLocalPath(
        MWCore::stringWithFileSystemRepresentation(path), false);
}

/// Measures all of the folder; nullopt if it is null or cannot be measured.
inline std::optional<MWCore::MXSizeMeasurement>
measure(const MWCore::MXFileSystemObject::Ptr &folder) {
    MWCore::MXSizeOptions options;
    options.walksVolume = true;
    return folder ? folder->measureSize(options) : std::nullopt;
}
