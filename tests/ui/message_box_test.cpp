// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include <MWCore/MessageBoxAlerts.h>

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QApplication>
#include <QMessageBox>
#include <QTimer>

namespace {

using namespace MWCore;

TEST(MessageBoxAlerts, BlockUntilTheButtonIsPressed) {
    qputenv("QT_QPA_PLATFORM", "offscreen");
    int count = 1;
    char name[] = "ui_test";
    char *arguments[] = {name, nullptr};
    const QApplication application(count, arguments);
    MessageBoxAlerts alerts;
    QString shown;
    QTimer::singleShot(0, [&shown] {
        const auto *const box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr) << "nothing is shown, or it does not block";
        for (const QString &text : {box->text(), box->informativeText()})
            shown += text + '|';
        ASSERT_EQ(box->buttons().size(), 1);
        shown += box->buttons().first()->text();
        EXPECT_EQ(box->textFormat(), Qt::PlainText) << "names of files may look like markup";
        box->buttons().first()->click();
    });
    alerts.show({"Sorry", "Error getting information for <b>.", "OK"});
    EXPECT_EQ(shown, "Sorry|Error getting information for <b>.|OK");
}

} // namespace
