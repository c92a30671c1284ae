// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/FileSystemText.h>

#include <string>

namespace MWCore::mwfile {

/// The bytes of a text from the library; for a name or path, those that the system uses.
[[nodiscard]] inline std::string bytesOf(const QString &text) {
    const auto bytes = fileSystemRepresentation(text);
    return bytes ? bytes->toStdString() : text.toStdString();
}

} // namespace MWCore::mwfile
