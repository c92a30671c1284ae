// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

namespace MWCore::mwfile {

/// Makes texts in vector drawings renderable: starts Qt's fonts without a display. Call it on the
/// main thread; calls after the first do nothing.
void useOffscreenGraphics();

} // namespace MWCore::mwfile
