// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <QByteArray>

namespace MWCore {

/// The extended attributes that keep resource forks; the first one that is there counts.
struct ForkPlace {
    const char *name;
    qsizetype trailing; ///< zeros behind the fork
};
constexpr ForkPlace kForkPlaces[] = {{"user.com.apple.ResourceFork", 0},
                                     {"user.org.netatalk.ResourceFork", 0},
                                     {"user.DosStream.AFP_Resource:$DATA", 1},
                                     {"user.AFP_Resource", 1}};

} // namespace MWCore
