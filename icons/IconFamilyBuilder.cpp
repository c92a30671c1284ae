// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "icons/IconFamilyBuilder.h"

#include "platform/formats/icns/IconElementData.h"
#include "platform/pictures/PngEncoding.h"

#include <algorithm>
#include <map>
#include <span>
#include <tuple>

namespace MWCore {
namespace {

// clang-format off
/// Elements for older programs.
constexpr uint32_t kOlderElements[] = {
    fourCharCode("is32"), fourCharCode("s8mk"), fourCharCode("ics8"), fourCharCode("ics#"),
    fourCharCode("il32"), fourCharCode("l8mk"), fourCharCode("icl8"), fourCharCode("ICN#"),
    fourCharCode("ih32"), fourCharCode("h8mk"), fourCharCode("it32"), fourCharCode("t8mk"),
};
// clang-format on

} // namespace

/// Builds one family. Renders each source once in each size, and encodes each such image once.
class IconFamilyBuilder::Build {
public:
    Build(const std::vector<Source> &sources, int pngEffort)
        : sources_(sources), pngEffort_(pngEffort) {}

    /// False if memory runs out.
    [[nodiscard]] bool add(std::span<const uint32_t> types, IconFamilyHandle &family) {
        return std::ranges::all_of(types, [this, &family](uint32_t type) {
            const QByteArray data = dataFor(*iconElementType(type));
            return !data.isEmpty() && SetIconFamilyData(family, type, data) == noErr;
        });
    }

private:
    QByteArray dataFor(const IconElementType &type) {
        const int pixels = type.size.width();
        const Source &source = sourceFor(pixels, type.scale);
        Rendered &rendered = rendered_[{&source, pixels}];
        if (rendered.image.isNull())
            rendered.image = source.picture.squareImage(pixels);
        if (rendered.image.isNull())
            return {};
        if (type.encoding != IconEncoding::File)
            return elementData(rendered.image, type);
        if (rendered.png.isEmpty())
            rendered.png = encodePng(rendered.image, pngEffort_);
        return rendered.png;
    }

    /// The best source; the first one of several.
    [[nodiscard]] const Source &sourceFor(int pixels, int scale) const {
        const auto order = [=](const Source &source) {
            const int side =
                std::max(source.picture.size().width(), source.picture.size().height());
            const bool hasSize = !source.picture.isVector() && side == pixels;
            const bool isLarger = side > pixels;
            return std::tuple(!(hasSize && source.scale == scale), !hasSize,
                              !source.picture.isVector(), !isLarger, isLarger ? side : -side);
        };
        return *std::ranges::min_element(sources_, {}, order);
    }

    struct Rendered {
        QImage image;
        QByteArray png;
    };
    const std::vector<Source> &sources_;
    int pngEffort_;
    std::map<std::pair<const Source *, int>, Rendered> rendered_; ///< by source and pixels
};

void IconFamilyBuilder::addPicture(const Picture &picture, int scale, Appearance appearance) {
    sources_[static_cast<std::size_t>(appearance)].push_back({picture, scale});
}

IconFamily::Ptr IconFamilyBuilder::build() const {
    const auto &[light, dark] = sources_;
    IconFamilyHandle family;
    Build lightBuild(light, pngEffort_);
    if (light.empty() || !lightBuild.add(kOlderElements, family) ||
        !lightBuild.add(kModernElements, family))
        return {};
    auto result = IconFamily::initWithIconFamilyHandle(family);
    if (dark.empty())
        return result;
    IconFamilyHandle darkFamily;
    if (!Build(dark, pngEffort_).add(kModernElements, darkFamily) ||
        !result->setNestedFamily(kDarkFamilyType, *IconFamily::initWithData(darkFamily)))
        return {};
    return result;
}

} // namespace MWCore
