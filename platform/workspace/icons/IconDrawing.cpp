// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/formats/icns/IconElementData.h"
#include "platform/workspace/icons/IconPictures.h"
#include "platform/workspace/icons/IconServices.h"

#include <MWCore/IconElements.h>

#include <span>
#include <utility>

namespace MWCore {
namespace {

// clang-format off
/// The elements for older programs that a family that is drawn has, too.
constexpr uint32_t kOlderElements[] = {
    fourCharCode("is32"), fourCharCode("s8mk"), fourCharCode("il32"), fourCharCode("l8mk"),
    fourCharCode("ih32"), fourCharCode("h8mk"), fourCharCode("it32"), fourCharCode("t8mk"),
};
// clang-format on

OSStatus addElement(IconPictures &pictures, uint32_t type, IconFamilyHandle &family) {
    const IconElementType *const element = iconElementType(type);
    const int width = element->size.width();
    const QImage image = pictures.image(width / element->scale, element->scale, width);
    return image.isNull() ? fnfErr : SetIconFamilyData(family, type, elementData(image, *element));
}

OSStatus draw(IconPictures &pictures, IconFamilyHandle *iconFamily) {
    IconFamilyHandle family;
    OSStatus status = noErr;
    for (const std::span<const uint32_t> types :
         {std::span<const uint32_t>(kModernElements), std::span<const uint32_t>(kOlderElements)})
        for (const uint32_t type : types)
            if (status == noErr)
                status = addElement(pictures, type, family);
    if (status == noErr)
        *iconFamily = std::move(family);
    return status;
}

} // namespace

OSStatus IconRefToIconFamily(const IconRef &iconRef, uint32_t whichIcons,
                             IconFamilyHandle *iconFamily) {
    if (whichIcons != kSelectorAllAvailableData)
        return paramErr;
    IconPictures pictures(iconRef, IconTheme::current(), IconPictures::Thumbnails::Skip);
    if (pictures.family().isEmpty())
        return draw(pictures, iconFamily);
    *iconFamily = pictures.family();
    return noErr;
}

} // namespace MWCore
