// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>

#include <QByteArrayView>

/// What alias files look like (see docs/metadata.md).
namespace MWCore {

constexpr QByteArrayView kAliasFileSuffix = ".desktop"; ///< of the form that is a desktop entry
constexpr QByteArrayView kAliasRecordKey = "X-MWCore-Alias"; ///< the record in base64
constexpr int64_t kLongestAliasEntry = 65536;      ///< bytes; more than a record and a URL can take
constexpr uint32_t kAliasResource = 0x616C6973;    ///< 'alis'
constexpr uint32_t kAliasFileType = 0x616C6973;    ///< 'alis'
constexpr uint32_t kAliasFileCreator = 0x4D414353; ///< 'MACS'

} // namespace MWCore
