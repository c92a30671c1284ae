// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "icons/IconFamilyReport.h"

#include "platform/formats/icns/IconContainer.h"
#include "platform/formats/icns/IconPixels.h"
#include "platform/pictures/Jpeg2000.h"
#include "platform/pictures/Png.h"

#include <algorithm>

namespace MWCore {
namespace {

constexpr int kDeepestNesting = 4; // families in families

IconFamilyReport examine(const QByteArray &data, int depth);

QString damageText(IconContainer::Damage damage) {
    using enum IconContainer::Damage;
    switch (damage) {
    case None:
        return {};
    case NoFamily:
        return QStringLiteral("does not begin with an icns header");
    case WrongLength:
        return QStringLiteral("declares another length than it has");
    case ElementTooShort:
        return QStringLiteral("an element is declared shorter than its header");
    case ElementTooLong:
        return QStringLiteral("an element extends beyond the end");
    case TooManyElements:
        return QStringLiteral("has more than a million elements");
    case Truncated:
        return QStringLiteral("ends in the middle of an element's header");
    }
    return {};
}

QString sizeText(QSize size) {
    return QStringLiteral("%1 x %2").arg(size.width()).arg(size.height());
}

/// What is wrong with the pixels of an RGB, ARGB, PNG or JPEG 2000 element.
QString pixelProblem(const IconElementType &type, QByteArrayView payload,
                     const DecodedPixels &pixels) {
    const bool isPngFile = pixels.storage == IconStorage::Png;
    const bool isFile = isPngFile || pixels.storage == IconStorage::Jpeg2000;
    const auto size = isPngFile ? pngSize(payload) : isFile ? jpeg2000Size(payload) : type.size;
    if (size && *size != type.size)
        return QStringLiteral("is %1 pixels, not %2").arg(sizeText(*size), sizeText(type.size));
    if (pixels.storage == IconStorage::Unknown)
        return QStringLiteral("is in no known format");
    if (pixels.image.isNull())
        return QStringLiteral("is damaged");
    constexpr qsizetype kPadding = 4;
    if (type.encoding == IconEncoding::PaddedRgb && !payload.startsWith(QByteArray(kPadding, '\0')))
        return QStringLiteral("does not begin with four zero bytes, so some programs refuse it");
    return {};
}

/// What is wrong in a nested family.
QString nestedProblem(QByteArrayView payload, int depth) {
    if (depth == kDeepestNesting)
        return QStringLiteral("is nested too deep");
    const IconFamilyReport nested = examine(familyFromNestedBytes(payload), depth + 1);
    if (!nested.problem.isEmpty())
        return nested.problem;
    const auto damaged =
        std::ranges::find_if(nested.elements, [](const IconElementReport &element) {
            return !element.problem.isEmpty();
        });
    return damaged == nested.elements.end() ? QString()
           : damaged->storage == IconStorage::Family
               ? damaged->problem
               : QStringLiteral("an element of it %1").arg(damaged->problem);
}

/// What is wrong if RGB pixels have no mask; nothing if they have one or need none.
QString maskProblem(const IconContainer &family, const IconElementType &type) {
    const bool needsMask = type.mask != 0 && type.encoding != IconEncoding::File;
    if (!needsMask || family.find(type.mask))
        return {};
    return QStringLiteral("has no mask, so it is opaque and some programs read no further");
}

/// Fills in the storage of an element of a known type and what is wrong with it.
void examinePayload(const IconContainer &family, const IconElementType &type,
                    QByteArrayView payload, int depth, IconElementReport &report) {
    if (hasPixels(type)) {
        const DecodedPixels pixels = decodePixels(type, payload);
        report.storage = pixels.storage;
        report.problem = pixelProblem(type, payload, pixels);
        if (report.problem.isEmpty())
            report.problem = maskProblem(family, type);
    } else if (const auto length = fixedLength(type)) {
        report.storage = IconStorage::Plain;
        if (payload.size() != *length)
            report.problem =
                QStringLiteral("has %1 bytes, not %2").arg(payload.size()).arg(*length);
    } else if (type.encoding == IconEncoding::Family) {
        report.storage = IconStorage::Family;
        report.problem = nestedProblem(payload, depth);
    }
}

IconElementReport reportOf(const IconContainer &family, const IconContainer::Element &element,
                           int depth) {
    IconElementReport report;
    report.type = element.type;
    report.offset = element.offset - IconContainer::kHeaderLength;
    report.length = element.length;
    const IconElementType *const type = iconElementType(element.type);
    if (!type)
        return report;
    report.encoding = type->encoding;
    report.size = type->size;
    report.scale = type->scale;
    if (family.find(element.type) != &element)
        report.problem =
            QStringLiteral("repeats an earlier element; programs differ in which one they use");
    else if (element.type == kTableOfContentsType && !family.hasCorrectTable())
        report.problem = QStringLiteral("does not list the elements as they are");
    else
        examinePayload(family, *type, family.payload(element), depth, report);
    return report;
}

IconFamilyReport examine(const QByteArray &data, int depth) {
    const IconContainer family(data);
    IconFamilyReport report;
    report.problem = damageText(family.damage());
    if (report.problem.isEmpty() && family.elements().empty())
        report.problem = QStringLiteral("has no elements");
    for (const IconContainer::Element &element : family.elements())
        report.elements.push_back(reportOf(family, element, depth));
    return report;
}

} // namespace

bool IconFamilyReport::isValid() const {
    return problem.isEmpty() && std::ranges::all_of(elements, [](const IconElementReport &element) {
               return element.problem.isEmpty();
           });
}

IconFamilyReport examineIconFamily(const QByteArray &data) {
    return examine(data, 0);
}

} // namespace MWCore
