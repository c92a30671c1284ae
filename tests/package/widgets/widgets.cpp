// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
// Shows an alert, prints what the message box says and presses its button.
#include <MWCore/MessageBoxAlerts.h>

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>

#include <cstdio>

using namespace MWCore;

int main(int count, char **arguments) {
    const QApplication application(count, arguments);
    MessageBoxAlerts alerts;
    Alerts::setCurrent(&alerts);
    QTimer::singleShot(0, [] {
        auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        std::puts(qPrintable(box->text() + ": " + box->informativeText()));
        box->buttons().first()->click();
    });
    Alerts::current()->show({"Sorry", "not found", "OK"});
    return 0;
}
