// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/foundation/MXAssertionHandler.h"
#include "platform/foundation/MXException.h"
#include "tests/support/LoggedMessages.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

using namespace MWCore;

/// A host's handler, which returns.
struct Recorder : MXAssertionHandler {
    void handleFailureInFunction(const QString &function, const QString &file, int lineNumber,
                                 const QString &description) override {
        place = function + "|" + file + "|" + QString::number(lineNumber);
        descriptions += description;
    }
    QString place;
    QStringList descriptions;
};

TEST(Assertion, IsLoggedAndThrownByTheStandardHandler) {
    const struct Row {
        const char *what;
        void (*fail)();
        const char *reason;
    } rows[] = {
        {"a parameter", [] { (void)assertParameter(false, "a %s != nil"); },
         "Invalid parameter not satisfying: a %s != nil"},
        {"anything else", [] { failAssertion("Es fällt aus"); }, "Es fällt aus"},
    };
    for (const Row &row : rows) {
        const LoggedMessages log;
        try {
            row.fail();
            ADD_FAILURE() << row.what << " goes on";
        } catch (const std::exception &failure) {
            const auto *const exception = dynamic_cast<const MXException *>(&failure);
            ASSERT_NE(exception, nullptr) << row.what;
            EXPECT_EQ(exception->name(), "NSInternalInconsistencyException");
            EXPECT_EQ(exception->reason(), row.reason);
            EXPECT_EQ(QString(exception->what()), exception->name() + ": " + row.reason);
        }
        const QStringList logged = LoggedMessages::take();
        ASSERT_EQ(logged.size(), 1);
        EXPECT_TRUE(logged[0].startsWith("mwcore: ")) << qPrintable(logged[0]);
        EXPECT_TRUE(logged[0].endsWith(row.reason)) << qPrintable(logged[0]);
    }
}

TEST(Assertion, ReportsItsLocationToAHandlerThatReturns) {
    Recorder recorder;
    MXAssertionHandler::setCurrentHandler(&recorder);
    EXPECT_TRUE(assertParameter(true, "holds"));
    EXPECT_FALSE(assertParameter(false, "here")); // the next line depends on this line's number
    const QString line = QString::number(__LINE__ - 1);
    EXPECT_EQ(recorder.descriptions, QStringList("Invalid parameter not satisfying: here"));
    EXPECT_EQ(recorder.place, "TestBody|" __FILE__ "|" + line);
    failAssertion("there", {"start", "Elsewhere", 39});
    EXPECT_EQ(recorder.place, "start|Elsewhere|39");
    MXAssertionHandler::setCurrentHandler(nullptr);
    EXPECT_NE(MXAssertionHandler::currentHandler(), &recorder);
}

TEST(Assertion, FallsBackToTheStandardHandlerWhenTheCurrentOneIsDestroyed) {
    MXAssertionHandler *const standard = MXAssertionHandler::currentHandler();
    std::optional<Recorder> first(std::in_place);
    std::optional<Recorder> second(std::in_place);
    MXAssertionHandler::setCurrentHandler(&*first);
    MXAssertionHandler::setCurrentHandler(&*second);
    first.reset();
    EXPECT_EQ(MXAssertionHandler::currentHandler(), &*second);
    second.reset();
    EXPECT_EQ(MXAssertionHandler::currentHandler(), standard);
}

} // namespace
