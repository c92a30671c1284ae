// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <cstdint>

#include <QByteArrayView>

/// The formats of alias files (docs/metadata.md).
namespace MWCore {

constexpr QByteArrayView kAliasRecordKey = "X-MWCore-Alias"; ///< the record in base64
constexpr uint32_t kAliasResource = 0x616C6973;              ///< 'alis'
constexpr uint32_t kAliasFileType = 0x616C6973;              ///< 'alis'
constexpr uint32_t kAliasFileCreator = 0x4D414353;           ///< 'MACS'

} // namespace MWCore
