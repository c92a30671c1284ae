// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "mwcore_export.h"

#include <QString>

namespace MWCore {

/// Handles every failed assertion. This class is the standard handler, which throws. A host that
/// wants to continue derives a handler that returns, and sets it as the current one.
class MWCORE_EXPORT MXAssertionHandler {
public:
    MXAssertionHandler() = default;
    MXAssertionHandler(const MXAssertionHandler &) = delete;
    MXAssertionHandler &operator=(const MXAssertionHandler &) = delete;

    /// Restores the standard handler if this is the current one.
    virtual ~MXAssertionHandler();

    /// The handler for the whole process, never null. Any thread.
    [[nodiscard]] static MXAssertionHandler *currentHandler();

    /// Makes @p handler the current one; null restores the standard handler. The caller keeps
    /// ownership and may destroy the previous handler once no other thread can be calling it. Any
    /// thread.
    static void setCurrentHandler(MXAssertionHandler *handler);

    /// Called on the thread where the assertion failed, with its source location. If this returns,
    /// the failed operation returns its own failure value. The standard handler logs the failure
    /// and throws MXException NSInternalInconsistencyException with @p description as the reason.
    virtual void handleFailureInFunction(const QString &function, const QString &file,
                                         int lineNumber, const QString &description);
};

/// The source location of an assertion. (Some supported compilers lack std::source_location.)
struct SourceLocation {
    const char *function;
    const char *file;
    int line;

    /// The location of the call. As a default argument, the location of the call that omits it.
    static constexpr SourceLocation here(const char *function = __builtin_FUNCTION(),
                                         const char *file = __builtin_FILE(),
                                         int line = __builtin_LINE()) {
        return {function, file, line};
    }
};

/// Reports a failed assertion at @p place to the current handler. Returns if the handler returns.
MWCORE_EXPORT void failAssertion(const QString &description,
                                 SourceLocation place = SourceLocation::here());

/// Returns @p satisfied. If it is false, first reports "Invalid parameter not satisfying: "
/// followed by @p condition, the source text of the condition; the caller then returns its failure
/// value.
[[nodiscard]] MWCORE_EXPORT bool assertParameter(bool satisfied, const char *condition,
                                                 SourceLocation place = SourceLocation::here());

} // namespace MWCore
