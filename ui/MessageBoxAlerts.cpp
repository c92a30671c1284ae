// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "ui/MessageBoxAlerts.h"

#include <QApplication>
#include <QMessageBox>

namespace MWCore {

void MessageBoxAlerts::show(const Alert &alert) {
    QMessageBox box(QMessageBox::Warning, alert.title, alert.title);
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(alert.message);
    box.addButton(alert.button, QMessageBox::AcceptRole);
    box.exec();
}

void MessageBoxAlerts::beep() {
    QApplication::beep();
}

} // namespace MWCore
