// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <QImage>

/// Pictures to make icons of, the same in every run. Opaque or transparent,
/// QImage::Format_RGBA8888.
namespace pictures {

/// A square like a photograph: shapes and texture of every size, and grain.
[[nodiscard]] QImage photograph(int width);

/// A square like a drawn icon: a few smooth shapes on a transparent ground.
[[nodiscard]] QImage drawing(int width);

} // namespace pictures
