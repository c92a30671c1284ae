// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#pragma once

#include "mwcoreui_export.h"

#include <MWCore/Alerts.h>

namespace MWCore {

/// Alerts as message boxes, which block all windows of the program until the user acknowledges
/// them. Needs a QApplication:
///
///     MessageBoxAlerts alerts;
///     Alerts::setCurrent(&alerts);
class MWCOREUI_EXPORT MessageBoxAlerts final : public Alerts {
public:
    void show(const Alert &alert) override;
    void beep() override;
};

} // namespace MWCore
