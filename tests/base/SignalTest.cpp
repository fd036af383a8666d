#include "base/Signal.h"

#include "base/NotificationCenter.h"
#include "base/Observable.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

namespace quillo {
namespace {

TEST(Signal, CallsSlotsInTheOrderOfConnection) {
    Signal<int> signal;
    std::vector<std::string> calls;
    const Connection first =
        signal.connect([&](int value) { calls.push_back("first " + std::to_string(value)); });
    const Connection second =
        signal.connect([&](int value) { calls.push_back("second " + std::to_string(value)); });
    signal.emit(7);
    EXPECT_EQ(calls, (std::vector<std::string>{"first 7", "second 7"}));
}

TEST(Signal, DroppingTheConnectionDisconnects) {
    Signal<> signal;
    int calls = 0;
    {
        const Connection connection = signal.connect([&] { ++calls; });
        signal.emit();
    }
    signal.emit();
    EXPECT_EQ(calls, 1);
}

TEST(Signal, ASlotMayDisconnectOneThatComesLater) {
    Signal<> signal;
    int calls = 0;
    Connection later;
    const Connection first = signal.connect([&] { later.disconnect(); });
    later = signal.connect([&] { ++calls; });
    signal.emit();
    EXPECT_EQ(calls, 0);
}

TEST(Signal, ASlotConnectedDuringAnEmissionWaitsForTheNext) {
    Signal<> signal;
    int calls = 0;
    Connection added;
    const Connection adding = signal.connect([&] {
        if (!added.connected())
            added = signal.connect([&] { ++calls; });
    });
    signal.emit();
    EXPECT_EQ(calls, 0);
    signal.emit();
    EXPECT_EQ(calls, 1);
}

TEST(Signal, AConnectionMayOutliveIt) {
    Connection connection;
    {
        Signal<> signal;
        connection = signal.connect([] {});
    }
    connection.disconnect();
    EXPECT_FALSE(connection.connected());
}

TEST(Observable, AnnouncesOnlyChanges) {
    Observable<int> number(1);
    std::vector<int> announced;
    const Connection connection = number.observe([&](const int& value) { announced.push_back(value); });
    number.set(1);
    number.set(2);
    number.set(2);
    number.set(1);
    EXPECT_EQ(announced, (std::vector<int>{2, 1}));
}

TEST(NotificationCenter, TellsObserversOfThatNameOnly) {
    NotificationCenter center;
    int inboxZero = 0;
    int other = 0;
    const Connection first = center.observe(notifications::inboxZero, [&] { ++inboxZero; });
    const Connection second = center.observe("Quillo.Other", [&] { ++other; });
    center.post(notifications::inboxZero);
    center.post("Quillo.NobodyListens");
    EXPECT_EQ(inboxZero, 1);
    EXPECT_EQ(other, 0);
}

} // namespace
} // namespace quillo
