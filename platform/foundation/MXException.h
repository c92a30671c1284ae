// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "mwcore_export.h"

#include <exception>

#include <QByteArray>
#include <QString>

namespace MWCore {

/// The names under which this library throws. A name is equal to its own constant.
inline constexpr QLatin1String NSInternalInconsistencyException("NSInternalInconsistencyException");
inline constexpr QLatin1String NSInvalidArgumentException("NSInvalidArgumentException");

/// A fault of the program: an assertion that does not hold, or an argument that cannot be. Nothing
/// else is thrown to a host. Copies are cheap and never throw.
class MWCORE_EXPORT MXException : public std::exception {
public:
    MXException(const QString &name, const QString &reason);
    MXException(const MXException &) = default;
    MXException &operator=(const MXException &) = default;
    ~MXException() override; // in the library, so that host and library share one type

    /// Tells the kind: one of the constants above.
    [[nodiscard]] const QString &name() const { return name_; }

    /// Tells the case, for a developer; not translated.
    [[nodiscard]] const QString &reason() const { return reason_; }

    /// "name: reason" in UTF-8. Lives as long as the exception.
    [[nodiscard]] const char *what() const noexcept override { return what_.constData(); }

private:
    QString name_;
    QString reason_;
    QByteArray what_;
};

} // namespace MWCore
