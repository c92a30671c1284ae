// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/foundation/MXAssertionHandler.h"

#include "platform/foundation/Log.h"
#include "platform/foundation/MXException.h"

#include <atomic>

namespace MWCore {
namespace {

/// Null while the standard handler is the current one.
constinit std::atomic<MXAssertionHandler *> chosenHandler = nullptr;

} // namespace

MXAssertionHandler::~MXAssertionHandler() {
    MXAssertionHandler *self = this;
    chosenHandler.compare_exchange_strong(self, nullptr);
}

MXAssertionHandler *MXAssertionHandler::currentHandler() {
    static MXAssertionHandler standard;
    MXAssertionHandler *const chosen = chosenHandler;
    return chosen ? chosen : &standard;
}

void MXAssertionHandler::setCurrentHandler(MXAssertionHandler *handler) {
    chosenHandler = handler;
}

void MXAssertionHandler::handleFailureInFunction(const QString &function, const QString &file,
                                                 int lineNumber, const QString &description) {
    qCWarning(mwcoreLog).noquote().nospace() << "Assertion failure in " << function << ", " << file
                                             << ":" << lineNumber << ": " << description;
    throw MXException(NSInternalInconsistencyException, description);
}

void failAssertion(const QString &description, SourceLocation place) {
    MXAssertionHandler::currentHandler()->handleFailureInFunction(
        QString::fromUtf8(place.function), QString::fromUtf8(place.file), place.line, description);
}

bool assertParameter(bool satisfied, const char *condition, SourceLocation place) {
    if (!satisfied)
        failAssertion(QString::asprintf("Invalid parameter not satisfying: %s", condition), place);
    return satisfied;
}

} // namespace MWCore
