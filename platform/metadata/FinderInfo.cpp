// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/metadata/FinderInfo.h"

#include "platform/formats/BigEndian.h"

#include <algorithm>

namespace MWCore {

void FinderInfo::setLabelNumber(int number) {
    const auto colour = FinderFlags::fromInt(static_cast<unsigned>(number) << 1);
    flags = (flags & ~FinderFlags(kColor)) | (colour & kColor);
}

FinderInfo FinderInfo::fromBytes(QByteArrayView bytes) {
    FinderInfo info;
    if (bytes.size() < kLength)
        return info;
    info.type = qFromBigEndian<uint32_t>(bytes.data());
    info.creator = qFromBigEndian<uint32_t>(bytes.data() + 4);
    info.flags = FinderFlags::fromInt(qFromBigEndian<uint16_t>(bytes.data() + 8));
    info.locationV = qFromBigEndian<int16_t>(bytes.data() + 10);
    info.locationH = qFromBigEndian<int16_t>(bytes.data() + 12);
    info.reserved = qFromBigEndian<uint16_t>(bytes.data() + 14);
    std::ranges::copy(bytes.sliced(16, 16), info.extended.begin());
    return info;
}

QByteArray FinderInfo::toBytes() const {
    QByteArray bytes;
    appendNumber(bytes, type);
    appendNumber(bytes, creator);
    appendNumber(bytes, static_cast<uint16_t>(flags.toInt()));
    appendNumber(bytes, locationV);
    appendNumber(bytes, locationH);
    appendNumber(bytes, reserved);
    bytes.append(extended.data(), static_cast<qsizetype>(extended.size()));
    return bytes;
}

} // namespace MWCore
