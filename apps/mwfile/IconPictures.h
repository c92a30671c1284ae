// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/IconFamilyBuilder.h>
#include <MWCore/Picture.h>

#include <array>
#include <optional>
#include <string>

namespace MWCore::mwfile {

/// Pictures of one icon, and the families that can be made of them. Every operation throws Failure
/// if it fails.
class IconPictures {
public:
    using Appearance = IconFamilyBuilder::Appearance;

    /// The best picture of an appearance: a vector drawing, else the largest one.
    struct Best {
        std::string path; ///< as given to add()
        Picture picture;
        int width; ///< of its longer side, in pixels
    };

    /// Adds the picture, or the iconset folder, at @p path. Links are followed.
    void add(const std::string &path, Appearance appearance = Appearance::Light);

    /// @p effort as in IconFamilyBuilder::setPngEffort().
    void setPngEffort(int effort);

    [[nodiscard]] const std::optional<Best> &best(Appearance appearance) const {
        return best_[static_cast<std::size_t>(appearance)];
    }

    /// The twelve elements of IconFamily::initWithThumbnailsOfImage(), made of the best picture
    /// alone.
    [[nodiscard]] IconFamily::Ptr classicFamily() const;

    /// All elements of IconFamilyBuilder, each made of the picture that fits it best.
    [[nodiscard]] IconFamily::Ptr modernFamily() const;

private:
    void addIconset(const std::string &path, Appearance appearance);
    void offer(const std::string &path, const Picture &picture, Appearance appearance);

    IconFamilyBuilder builder_;
    std::array<std::optional<Best>, 2> best_; ///< by appearance
    std::optional<int> pngEffort_;
};

} // namespace MWCore::mwfile
