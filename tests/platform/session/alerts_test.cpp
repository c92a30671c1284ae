// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "tests/support/LoggedMessages.h"

#include <MWCore/Alerts.h>

#include <gtest/gtest.h>

#include <memory>

namespace {

using namespace MWCore;

struct Recorder : Alerts {
    void show(const Alert &alert) override { shown += alert.message; }
    void beep() override {}
    QStringList shown;
};

TEST(Alerts, GoToTheLogUnlessAnObjectShowsThem) {
    const Alert alert{"Sorry", "Could not find adminopen application", "OK"};
    const LoggedMessages log;
    auto recorder = std::make_unique<Recorder>();
    Alerts::setCurrent(recorder.get());
    Alerts::current()->show(alert);
    EXPECT_EQ(recorder->shown, QStringList("Could not find adminopen application"));
    EXPECT_EQ(LoggedMessages::take(), QStringList());

    recorder.reset();
    Alerts::current()->show(alert);
    EXPECT_EQ(LoggedMessages::take(),
              QStringList("mwcore: Sorry: Could not find adminopen application"));
}

} // namespace
