// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mwcore_export.h>

#include <array>
#include <cstdint>

#include <QByteArray>
#include <QByteArrayView>
#include <QFlags>

namespace MWCore {

/// Bits of `FinderInfo::flags`.
enum FinderFlag : uint16_t {
    kIsOnDesk = 0x0001,
    kColor = 0x000E, ///< three bits: the label number
    kHasBeenInited = 0x0100,
    kHasCustomIcon = 0x0400,
    kHasBundle = 0x2000,
    kIsInvisible = 0x4000,
    kIsAlias = 0x8000,
};
Q_DECLARE_FLAGS(FinderFlags, FinderFlag)
Q_DECLARE_OPERATORS_FOR_FLAGS(FinderFlags)

/// What a desktop stores about a file or folder: 32 bytes, big-endian where they are stored. For a
/// folder, the first eight bytes are the bounds of its window instead of type and creator.
struct MWCORE_EXPORT FinderInfo {
    static constexpr qsizetype kLength = 32;

    uint32_t type = 0;    ///< a four-character code, 0 for none
    uint32_t creator = 0; ///< a four-character code, 0 for none
    FinderFlags flags;
    int16_t locationV = 0;
    int16_t locationH = 0;
    uint16_t reserved = 0;
    std::array<char, 16> extended{}; ///< as stored

    friend bool operator==(const FinderInfo &, const FinderInfo &) = default;

    [[nodiscard]] bool isNone() const { return *this == FinderInfo(); }

    /// 0 (no label) to 7.
    [[nodiscard]] int labelNumber() const {
        return static_cast<int>((flags & kColor).toInt() >> 1);
    }
    void setLabelNumber(int number);

    /// The information in the first 32 bytes; none if there are fewer.
    [[nodiscard]] static FinderInfo fromBytes(QByteArrayView bytes);
    [[nodiscard]] QByteArray toBytes() const;
};

} // namespace MWCore
