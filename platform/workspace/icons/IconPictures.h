// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "platform/formats/icns/IconContainer.h"
#include "platform/workspace/icons/IconServices.h"
#include "platform/workspace/themes/IconTheme.h"

#include <MWCore/Picture.h>

#include <cstdint>
#include <map>
#include <memory>
#include <optional>

#include <QByteArray>
#include <QImage>
#include <QStringList>

namespace MWCore {

/// The pictures of one icon, for the sizes that are wanted; each file is read once. Belongs to one
/// thread.
class IconPictures {
public:
    enum class Thumbnails : uint8_t { Skip, Use };

    /// @p theme may be null.
    IconPictures(IconRef icon, std::shared_ptr<const IconTheme> theme, Thumbnails thumbnails);

    /// The icon's own family: its custom icon, or the one in its file. Empty if it has none.
    [[nodiscard]] const IconFamilyHandle &family();

    /// The icon in a transparent square of @p pixels, drawn as its pictures for @p points at
    /// @p scale whole pixels per point. A damaged picture is passed over. QImage::Format_RGBA8888.
    /// Null if it has none.
    [[nodiscard]] QImage image(int points, int scale, int pixels);

    /// Which picture that is, if other icons may have it, too: the path of the theme's file, or the
    /// name of the drawing. Empty if the icon is one of the item alone.
    [[nodiscard]] QByteArray shareable(int points, int scale) const;

    /// Whether that picture is the last one drawn: its file may be damaged.
    [[nodiscard]] bool hasDrawn(const QByteArray &shareable) const {
        return !shareable.isEmpty() && shareable == drawn_;
    }

private:
    void readOwn();
    [[nodiscard]] std::optional<QByteArray> themeFile(const QStringList &names, int points,
                                                      int scale) const;
    [[nodiscard]] std::optional<QByteArray> bestThemeFile(int points, int scale) const;
    [[nodiscard]] QImage familyImage(int pixels);
    [[nodiscard]] QImage themeImage(int points, int scale, int pixels);
    [[nodiscard]] QImage fileImage(const QByteArray &path, int pixels);
    [[nodiscard]] QImage drawing(int points, int pixels);
    [[nodiscard]] QImage rendered(const QByteArray &name, int pixels);

    IconRef icon_;
    std::shared_ptr<const IconTheme> theme_;
    bool isOwnRead_ = false;
    IconFamilyHandle family_;
    std::optional<Picture> own_;
    std::map<QByteArray, std::optional<Picture>> pictures_; ///< by shareable()
    QByteArray drawn_;                                      ///< the one of them that was drawn last
    Thumbnails thumbnails_;
};

} // namespace MWCore
