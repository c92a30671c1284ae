// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mwcore_export.h>

#include <QString>

namespace MWCore {

/// The URL of an item (RFC 3986), in several forms. A host with remote items derives from this
/// class.
class MWCORE_EXPORT MXURLObject {
public:
    MXURLObject() = default;
    MXURLObject(const MXURLObject &) = delete;
    MXURLObject &operator=(const MXURLObject &) = delete;
    virtual ~MXURLObject();

    /// The whole URL.
    [[nodiscard]] virtual QString urlAsString() const = 0;

    /// Only scheme and host: "file://".
    [[nodiscard]] virtual QString urlWithoutPath() const = 0;

    /// The whole URL without a password, for display.
    [[nodiscard]] virtual QString urlAsCleanString() const = 0;
};

} // namespace MWCore
