// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/PropertyList.h"
#include "tests/fuzz/fuzz.h"

#include <QVariantList>
#include <QVariantMap>

namespace {

/// The number of values in @p value, including itself. Checks the limit on nesting as well.
std::size_t countOf(const QVariant &value, int depth) {
    require(depth <= MWCore::kPropertyListDepth);
    std::size_t count = 1;
    if (value.typeId() == QMetaType::QVariantList)
        for (const QVariant &item : value.toList())
            count += countOf(item, depth + 1);
    else if (value.typeId() == QMetaType::QVariantMap)
        for (const QVariant &item : value.toMap())
            count += countOf(item, depth + 1);
    return count;
}

} // namespace

/// The parsed list never has more values than the length of the input justifies.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size) {
    constexpr std::size_t kValuesPerByte = 8;
    const QVariant list = MWCore::readPropertyList(inputBytes(data, size));
    require(!list.isValid() || countOf(list, 0) <= kValuesPerByte * size);
    return 0;
}
