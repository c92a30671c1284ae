// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/IconElements.h>
#include <MWCore/mwcore_export.h>

#include <cstdint>
#include <vector>

#include <QByteArray>
#include <QSize>
#include <QString>

namespace MWCore {

/// How the payload of an element is stored.
enum class IconStorage : uint8_t {
    Compressed,   ///< RGB or ARGB channels as runs
    Uncompressed, ///< RGB or ARGB pixels as they are, which not every program reads
    Plain,        ///< mask, 1-bit, indexed
    Png,
    Jpeg2000,
    Family,
    Unknown,
};

struct IconElementReport {
    uint32_t type;
    qsizetype offset; ///< of the element's header, bytes
    qsizetype length; ///< of the payload, bytes
    IconEncoding encoding;
    IconStorage storage;
    QSize size;      ///< pixels; empty if it is not an image
    int scale;       ///< pixels per point
    QString problem; ///< what is wrong with it, in English; empty if nothing is
};

/// A description of a family's bytes for people who look for the fault.
struct IconFamilyReport {
    std::vector<IconElementReport> elements; ///< in the family's order
    QString problem; ///< of the container as a whole, in English; empty if there is none

    [[nodiscard]] bool isValid() const;
};

/// Examines the family @p data; decodes the first element of each type. The elements of nested
/// families are not listed but are examined.
[[nodiscard]] MWCORE_EXPORT IconFamilyReport examineIconFamily(const QByteArray &data);

} // namespace MWCore
