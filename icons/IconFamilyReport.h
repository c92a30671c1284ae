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

struct IconElementReport {
    uint32_t type = 0;
    qsizetype offset = 0; ///< of the element's header, bytes
    qsizetype length = 0; ///< of the payload, bytes
    IconEncoding encoding = IconEncoding::Other;
    IconStorage storage = IconStorage::Unknown;
    QSize size;      ///< pixels; empty if it is not an image
    int scale = 1;   ///< pixels per point
    QString problem; ///< what is wrong with it, in English; empty if nothing is
};

/// A description of a family's bytes for people who look for the fault.
struct MWCORE_EXPORT IconFamilyReport {
    std::vector<IconElementReport> elements; ///< in the family's order
    QString problem; ///< of the container as a whole, in English; empty if there is none

    [[nodiscard]] bool isValid() const;
};

/// Examines the family @p data; decodes the first element of each type. The elements of nested
/// families are not listed but are examined.
[[nodiscard]] MWCORE_EXPORT IconFamilyReport examineIconFamily(const QByteArray &data);

} // namespace MWCore
