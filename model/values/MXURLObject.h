// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include <MWCore/mwcore_export.h>

#include <QString>

namespace MWCore {

/// The address of an item, in the forms that hosts show and pass on. A host that has items
/// elsewhere than on this system derives from it. Texts are URLs (RFC 3986).
class MWCORE_EXPORT MXURLObject {
public:
    MXURLObject() = default;
    MXURLObject(const MXURLObject &) = delete;
    MXURLObject &operator=(const MXURLObject &) = delete;
    virtual ~MXURLObject();

    /// The whole address.
    [[nodiscard]] virtual QString urlAsString() const = 0;

    /// Scheme and host alone: "file://".
    [[nodiscard]] virtual QString urlWithoutPath() const = 0;

    /// The whole address, fit to be shown: without a password.
    [[nodiscard]] virtual QString urlAsCleanString() const = 0;
};

} // namespace MWCore
