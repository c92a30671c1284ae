// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "icons/IconFamily.h"
#include "icons/IconFamilyReport.h"
#include "platform/formats/icns/IconContainer.h"
#include "tests/fuzz/fuzz.h"

using namespace MWCore;

namespace {

/// Every element is inside the family, and its data can be set again.
void checkElement(const QByteArray &bytes, const IconContainer::Element &element) {
    require(element.offset >= 0 && element.offset + element.length <= bytes.size());
    OSStatus status = noErr;
    const auto data = GetIconFamilyData(bytes, element.type, &status);
    require(data.has_value() == (status == noErr));
    IconFamilyHandle copy;
    constexpr int kPngEffort = 1;
    if (data && SetIconFamilyData(copy, element.type, *data, kPngEffort) == noErr) {
        const auto again = GetIconFamilyData(copy, element.type, &status);
        require(again == data);
    }
}

} // namespace

/// No family makes a reader fail, and a family without damage is written again as it was.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size) {
    const QByteArray bytes = inputBytes(data, size);
    const IconContainer container(bytes);
    for (const IconContainer::Element &element : container.elements())
        if (container.find(element.type) == &element)
            checkElement(bytes, element);
    if (container.damage() == IconContainer::Damage::None && !container.elements().empty()) {
        const IconContainer::Element &first = container.elements().front();
        require(familyWithElement(bytes, first.type, container.payload(first)) == bytes);
    }
    require(examineIconFamily(bytes).elements.size() == container.elements().size());
    const auto family = IconFamily::initWithData(bytes);
    require(family->imageWithAllReps().representations.size() <= container.elements().size());
    return 0;
}
