// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "IconFamily.h"

#include <MWCore/mwcore_export.h>
#include <MWCore/OSStatus.h>
#include <MWCore/Picture.h>
#include <MWCore/PngEncoding.h>

#include <array>
#include <cstdint>
#include <vector>

#include <QString>

namespace MWCore {

/// Builds a complete icon family, as bundles of applications have it: 'ic04', 'ic05', 'ic07' to
/// 'ic14', 'ih32' with 'h8mk', and the twelve elements of IconFamily::initWithThumbnailsOfImage().
/// An element is made from the first of these that was added: a picture for exactly its size and
/// scale, one of as many pixels, a vector drawing, the smallest picture with more pixels, the
/// largest one. Belongs to one thread.
class MWCORE_EXPORT IconFamilyBuilder {
public:
    enum class Appearance : uint8_t { Light, Dark };

    /// Adds a picture. @p scale is the number of pixels per point that it was drawn for; 0 if that
    /// is not known.
    void addPicture(const Picture &picture, int scale = 0,
                    Appearance appearance = Appearance::Light);

    /// Adds the files icon_16x16.png to icon_512x512@2x.png of the folder @p path; others in it are
    /// ignored. fnfErr if there is none of them; else the cause if one cannot be read or has
    /// another size than its name says (paramErr); then none is added.
    [[nodiscard]] OSStatus addIconset(const QString &path,
                                      Appearance appearance = Appearance::Light);

    /// 0 stores PNG uncompressed, 9 compresses it best.
    void setPngEffort(int effort) { pngEffort_ = effort; }

    /// The family; a dark variant is nested in it if a dark picture was added. Null if no light
    /// picture was added or memory runs out.
    [[nodiscard]] IconFamily::Ptr build() const;

private:
    class Build;
    struct Source {
        Picture picture;
        int scale;
    };
    std::array<std::vector<Source>, 2> sources_; ///< by appearance
    int pngEffort_ = kDefaultPngEffort;
};

/// Writes the elements of @p family that an iconset holds as PNG files to the folder @p path, which
/// is created if necessary; files with the same names are replaced. resNotFound if it has none.
[[nodiscard]] MWCORE_EXPORT OSStatus writeIconset(const IconFamily &family, const QString &path);

} // namespace MWCore
