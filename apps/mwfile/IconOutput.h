// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "OutputFolder.h"

#include <MWCore/IconFamily.h>

#include <string>

#include <QByteArray>
#include <QString>

namespace MWCore::mwfile {

/// @p path as the operations of IconFamily take it.
[[nodiscard]] QString pathText(const std::string &path);

/// Writes an .icns file. Throws Failure if another file is there that is not one, and
/// Existing::Replace is not given.
void writeFamily(const IconFamily &family, const std::string &path, Existing existing);

/// Writes a PNG file. Throws Failure if something is there, unless it is an empty file, or a file
/// and Existing::Replace is given.
void writePng(const QByteArray &png, const std::string &path, Existing existing);

/// Whether nobody may change the item at @p path.
[[nodiscard]] bool isLocked(const std::string &path);

} // namespace MWCore::mwfile
