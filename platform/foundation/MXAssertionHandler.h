// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "mwcore_export.h"

#include <QString>

namespace MWCore {

/// Hears of every assertion that does not hold. This class is the standard handler: it throws. A
/// host that would rather go on derives from it, returns, and makes an object of it the current
/// one.
class MWCORE_EXPORT MXAssertionHandler {
public:
    MXAssertionHandler() = default;
    MXAssertionHandler(const MXAssertionHandler &) = delete;
    MXAssertionHandler &operator=(const MXAssertionHandler &) = delete;

    /// A handler that goes while it is the current one makes room for the standard handler.
    virtual ~MXAssertionHandler();

    /// The one handler of the process, never null. Any thread.
    [[nodiscard]] static MXAssertionHandler *currentHandler();

    /// Makes @p handler, which stays the caller's, the current one; null restores the standard
    /// handler. Any thread, as long as no other thread may be reporting to the one that then goes.
    static void setCurrentHandler(MXAssertionHandler *handler);

    /// Called on the thread where the assertion failed, with the place in the source. When this
    /// returns, the failed operation ends with its own failure value. The standard handler logs the
    /// failure and throws MXException NSInternalInconsistencyException with @p description as the
    /// reason.
    virtual void handleFailureInFunction(const QString &function, const QString &file,
                                         int lineNumber, const QString &description);
};

/// Where in the source an assertion stands. (Compilers in use lack std::source_location.)
struct SourcePlace {
    const char *function;
    const char *file;
    int line;

    /// The place of the call; as a default argument, that of the call which leaves it out.
    static constexpr SourcePlace here(const char *function = __builtin_FUNCTION(),
                                      const char *file = __builtin_FILE(),
                                      int line = __builtin_LINE()) {
        return {function, file, line};
    }
};

/// Reports a failed assertion at @p place to the current handler. Returns if that does.
MWCORE_EXPORT void failAssertion(const QString &description,
                                 SourcePlace place = SourcePlace::here());

/// Whether @p satisfied; if not, reports "Invalid parameter not satisfying: " and @p condition, the
/// text of the condition. The caller returns its failure value for false.
[[nodiscard]] MWCORE_EXPORT bool assertParameter(bool satisfied, const char *condition,
                                                 SourcePlace place = SourcePlace::here());

} // namespace MWCore
