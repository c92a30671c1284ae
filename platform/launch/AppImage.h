// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <QByteArrayView>

namespace MWCore {

constexpr int kAppImageStart = 11; ///< bytes by which an AppImage is recognised

/// Whether a file that starts with @p start is an AppImage, which has "AI" and its type in the
/// unused bytes of its ELF identification. False for fewer than kAppImageStart bytes.
[[nodiscard]] inline bool isAppImage(QByteArrayView start) {
    if (start.size() < kAppImageStart)
        return false;
    const QByteArrayView identification = start.first(kAppImageStart);
    return identification.startsWith("\x7F"
                                     "ELF") &&
           (identification.endsWith("AI\x01") || identification.endsWith("AI\x02"));
}

} // namespace MWCore
