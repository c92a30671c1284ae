// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/files/RegularFile.h"
#include "platform/formats/icns/IconElementData.h"
#include "platform/foundation/FrameworkResources.h"
#include "platform/workspace/IconServices.h"
#include "platform/workspace/IconTheme.h"
#include "platform/workspace/ResponsiveFiles.h"

#include <MWCore/IconElements.h>
#include <MWCore/Picture.h>

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
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

constexpr int64_t kLongestThemeIcon = 16'777'216; // bytes; real ones have some 100,000

/// The pictures of an icon for the sizes that are asked for.
class IconPictures {
public:
    /// @p file is the content of the icon's file, if it has one.
    IconPictures(const IconRef &icon, const std::optional<QByteArray> &file)
        : icon_(icon), own_(pictureIn(file)) {}

    /// Null if there is none. Valid as long as this object.
    const Picture *find(int size, int scale) {
        if (own_)
            return &*own_;
        const auto path = theme_->find(icon_.themeNames, size, scale);
        const Picture *const found = path ? inTheme(*path) : nullptr;
        return found ? found : drawing();
    }

private:
    static std::optional<Picture> pictureIn(const std::optional<QByteArray> &bytes) {
        OSStatus status = noErr;
        return bytes ? Picture::fromBytes(*bytes, &status) : std::nullopt;
    }

    /// A scalable file serves several sizes.
    const Picture *inTheme(const QByteArray &path) {
        auto known = pictures_.find(path);
        if (known == pictures_.end())
            known =
                pictures_.emplace(path, pictureIn(ResponsiveFiles().read(path, kLongestThemeIcon)))
                    .first;
        return known->second ? &*known->second : nullptr;
    }

    const Picture *drawing() {
        if (!drawing_)
            drawing_ = pictureIn(FrameworkResources::data(icon_.drawing, "svg"));
        return drawing_ ? &*drawing_ : nullptr;
    }

    const IconRef &icon_;
    std::optional<Picture> own_;
    std::shared_ptr<const IconTheme> theme_ = IconTheme::current();
    std::map<QByteArray, std::optional<Picture>> pictures_; ///< by path
    std::optional<Picture> drawing_;
};

OSStatus addElement(IconPictures &pictures, uint32_t type, IconFamilyHandle &family) {
    const IconElementType *const element = iconElementType(type);
    const int width = element->size.width();
    const Picture *const picture = pictures.find(width / element->scale, element->scale);
    const QImage image = picture ? picture->squareImage(width) : QImage();
    return image.isNull() ? fnfErr : SetIconFamilyData(family, type, elementData(image, *element));
}

OSStatus draw(IconPictures pictures, IconFamilyHandle *iconFamily) {
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

std::optional<QByteArray> contentOf(const QByteArray &file) {
    OSStatus status = noErr;
    return file.isEmpty() ? std::nullopt
                          : readRegularFile(file, kLongestIconFamily, FinalLink::Keep, &status);
}

} // namespace

OSStatus IconRefToIconFamily(const IconRef &iconRef, uint32_t whichIcons,
                             IconFamilyHandle *iconFamily) {
    if (whichIcons != kSelectorAllAvailableData)
        return paramErr;
    if (!iconRef.family.isEmpty()) {
        *iconFamily = iconRef.family;
        return noErr;
    }
    const auto file = contentOf(iconRef.file);
    if (!file || !file->startsWith("icns"))
        return draw(IconPictures(iconRef, file), iconFamily);
    *iconFamily = *file;
    return noErr;
}

} // namespace MWCore
