// SPDX-License-Identifier: MIT
// SPDX-FileCopyrightText: The MWCore authors
#include "platform/foundation/MXNotificationCenter.h"
#include "tests/support/LoggedMessages.h"

#include <gtest/gtest.h>

#include <optional>

namespace {

using namespace MWCore;

MXNotificationCenter &center() {
    return *MXNotificationCenter::defaultCenter();
}

/// Records the notifications that it receives.
class Listener : public QObject {
    Q_OBJECT

public:
    QStringList heard;

    Q_INVOKABLE void heardInvokable(const MWCore::MXNotification &notification) {
        note(notification);
    }
    Q_SLOT void heardQualified(const MWCore::MXNotification &notification) { note(notification); }
    Q_SLOT void heardBoth(const MXNotification &notification) { note(notification); }
    Q_SLOT void heardBoth() { heard += "nothing"; }
    Q_SLOT void heardNothing() { heard += "nothing"; }
    Q_SLOT void wantsText(const QString &text) { heard += text; }

private:
    void note(const MXNotification &notification) {
        heard += notification.name + notification.userInfo["key"].toString();
    }
};

TEST(Notification, ReachesSlotsOfEveryForm) {
    const struct Row {
        const char *selector;
        QStringList heard;
        qsizetype errorOutput;
    } rows[] = {
        {"heardQualified", {"name7"}, 0},
        {"heardBoth", {"name7"}, 0},
        {"heardInvokable", {"name7"}, 0},
        {"heardNothing", {"nothing"}, 0},
        {"wantsText", {}, 1},
        {"missing", {}, 1},
        {"", {}, 1},
    };
    for (const Row &row : rows) {
        const LoggedMessages log;
        Listener listener;
        center().addObserver(&listener, row.selector);
        center().postNotificationName("name", nullptr, {{"key", 7}});
        EXPECT_EQ(listener.heard, row.heard) << row.selector;
        EXPECT_EQ(LoggedMessages::take().size(), row.errorOutput) << row.selector;
    }
}

TEST(Notification, IsFilteredByNameAndObject) {
    QObject sender;
    QObject other;
    const struct Row {
        const char *name;
        QObject *object;
        QString heard; ///< among: a from sender, a from other, a from nobody, b from sender
    } rows[] = {
        {"", nullptr, "1234"}, {"a", nullptr, "123"}, {"", &sender, "14"},
        {"a", &other, "2"},    {"A", nullptr, ""},
    };
    for (const Row &row : rows) {
        QString heard;
        const auto observation = center().addObserver(
            [&heard](const MXNotification &each) { heard += each.userInfo["key"].toString(); },
            row.name, row.object);
        center().postNotificationName("a", &sender, {{"key", 1}});
        center().postNotificationName("a", &other, {{"key", 2}});
        center().postNotificationName("a", nullptr, {{"key", 3}});
        center().postNotificationName("b", &sender, {{"key", 4}});
        EXPECT_EQ(heard, row.heard) << row.name;
    }
}

TEST(Notification, DoesNotReachRemovedObservers) {
    QObject sender;
    QObject other;
    const struct Row {
        const char *name;
        QObject *object;
        qsizetype left; ///< of the three calls for a post of "a" by sender
    } rows[] = {
        {"", nullptr, 0}, {"a", nullptr, 1}, {"a", &sender, 2},
        {"", &sender, 2}, {"b", nullptr, 3}, {"", &other, 3},
    };
    bool isCalled = false;
    const auto untouched =
        center().addObserver([&isCalled](const MXNotification &) { isCalled = true; });
    center().removeObserver(nullptr); // a callback has no target either
    for (const Row &row : rows) {
        Listener listener;
        center().addObserver(&listener, "heardNothing", "a", &sender);
        center().addObserver(&listener, "heardNothing", "a");
        center().addObserver(&listener, "heardNothing");
        center().removeObserver(&listener, row.name, row.object);
        center().postNotificationName("a", &sender);
        EXPECT_EQ(listener.heard.size(), row.left) << row.name;
    }
    EXPECT_TRUE(isCalled);
}

TEST(Notification, IsDeliveredInOrderWhileObserversComeAndGo) {
    QString calls;
    const auto add = [&calls](
                         QChar letter, const std::function<void()> &also = [] {}) {
        return center().addObserver([&calls, letter, also](const MXNotification &) {
            calls += letter;
            also();
        });
    };
    std::vector<MXNotificationCenter::Observation> added;
    MXNotificationCenter::Observation doomed;
    std::optional<Listener> listener(std::in_place);
    MXNotificationCenter::Observation first = add('1', [&] {
        added.push_back(add('5'));
        doomed.reset();
        listener.reset();
        first.reset(); // and itself
    });
    doomed = add('2');
    center().addObserver(&*listener, "missing"); // would be logged
    const auto nested = add('3', [&calls] {
        if (calls.count('3') < 2)
            center().postNotificationName("again");
    });
    const auto last = add('4');

    const LoggedMessages log;
    center().postNotificationName("once");
    EXPECT_EQ(calls, "13"
                     "345"
                     "4");
    EXPECT_EQ(LoggedMessages::take(), QStringList());
}

TEST(Notification, DoesNotMistakeANewObjectForADestroyedOne) {
    alignas(QObject) std::byte place[sizeof(QObject)];
    Listener listener;
    auto *object = new (place) QObject;
    center().addObserver(&listener, "heardNothing", "name", object);
    const auto ends = center().addObserver([&](const MXNotification &) { object->~QObject(); });
    const auto looks = center().addObserver(
        [](const MXNotification &notification) { EXPECT_EQ(notification.object, nullptr); });
    center().postNotificationName("another", object);
    object = new (place) QObject;
    center().postNotificationName("name", object);
    EXPECT_EQ(listener.heard, QStringList());
}

} // namespace

#include "notification_test.moc"
