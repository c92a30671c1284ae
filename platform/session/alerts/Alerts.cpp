// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/session/alerts/Alerts.h"

#include "platform/foundation/Log.h"

namespace MWCore {
namespace {

class LoggedAlerts final : public Alerts {
public:
    void show(const Alert &alert) override {
        qCWarning(mwcoreLog).noquote().nospace() << alert.title << ": " << alert.message;
    }
    void beep() override {}
};

/// Null for the alerts that are written to the log.
constinit Alerts *chosenAlerts = nullptr;

} // namespace

Alerts::~Alerts() {
    if (chosenAlerts == this)
        chosenAlerts = nullptr;
}

Alerts *Alerts::current() {
    static LoggedAlerts logged;
    return chosenAlerts ? chosenAlerts : &logged;
}

void Alerts::setCurrent(Alerts *alerts) {
    chosenAlerts = alerts;
}

} // namespace MWCore
