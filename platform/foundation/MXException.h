// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "mwcore_export.h"

#include <exception>

#include <QByteArray>
#include <QString>

namespace MWCore {

/// The names of the exceptions that this library throws. Each constant holds its own name.
inline constexpr QLatin1String NSInternalInconsistencyException("NSInternalInconsistencyException");
inline constexpr QLatin1String NSInvalidArgumentException("NSInvalidArgumentException");

/// A programming error: a failed assertion or an invalid argument. The library throws nothing else
/// to a host. Copies are cheap and never throw.
class MWCORE_EXPORT MXException : public std::exception {
public:
    MXException(const QString &name, const QString &reason);
    MXException(const MXException &) = default;
    MXException &operator=(const MXException &) = default;
    ~MXException() override; // defined in the library, so that host and library share one type

    /// The kind of error: one of the constants above.
    [[nodiscard]] const QString &name() const { return name_; }

    /// What failed, for a developer; not translated.
    [[nodiscard]] const QString &reason() const { return reason_; }

    /// "name: reason" in UTF-8. Lives as long as the exception.
    [[nodiscard]] const char *what() const noexcept override { return what_.constData(); }

private:
    QString name_;
    QString reason_;
    QByteArray what_;
};

} // namespace MWCore
