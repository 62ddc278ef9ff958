#include "foundation/Signal.h"

#include <gtest/gtest.h>

#include <optional>

namespace orvu {
namespace {

TEST(ScopedConnectionTest, EndsWithItsHolder) {
    sigc::signal<void()> signal;
    int calls = 0;
    {
        const ScopedConnection connection{signal.connect([&] { ++calls; })};
        signal.emit();
    }

    signal.emit();

    EXPECT_EQ(calls, 1);
}

TEST(ScopedConnectionTest, MovesToItsNewHolder) {
    sigc::signal<void()> signal;
    int calls = 0;
    std::optional<ScopedConnection> first{signal.connect([&] { ++calls; })};
    ScopedConnection second{std::move(*first)};
    first.reset();

    signal.emit();

    EXPECT_EQ(calls, 1);
}

TEST(ScopedConnectionTest, AssigningEndsTheConnectionHeldBefore) {
    sigc::signal<void()> signal;
    std::string seen;
    ScopedConnection connection{signal.connect([&] { seen += '1'; })};

    connection = ScopedConnection{signal.connect([&] { seen += '2'; })};
    signal.emit();

    EXPECT_EQ(seen, "2");
}

TEST(ScopedConnectionTest, MayOutliveItsSignal) {
    ScopedConnection connection;
    int calls = 0;
    {
        sigc::signal<void()> signal;
        connection = ScopedConnection{signal.connect([&] { ++calls; })};
    }

    connection = ScopedConnection{};

    EXPECT_EQ(calls, 0);
}

TEST(ChangeSignalTest, GoesOutOnceAtTheEndOfTheOutermostScope) {
    ChangeSignal signal;
    int calls = 0;
    signal.connect([&] { ++calls; });
    {
        const ChangeSignal::Scope outer{signal};
        signal.note();
        {
            const ChangeSignal::Scope inner{signal};
            signal.note();
        }
        EXPECT_EQ(calls, 0);
    }

    EXPECT_EQ(calls, 1);
}

TEST(ChangeSignalTest, StaysSilentIfNothingWasNoted) {
    ChangeSignal signal;
    int calls = 0;
    signal.connect([&] { ++calls; });

    {
        const ChangeSignal::Scope scope{signal};
    }

    EXPECT_EQ(calls, 0);
}

TEST(ChangeSignalTest, WhatWasNotedGoesOutOnlyOnce) {
    ChangeSignal signal;
    int calls = 0;
    signal.connect([&] { ++calls; });
    {
        const ChangeSignal::Scope scope{signal};
        signal.note();
    }

    {
        const ChangeSignal::Scope scope{signal};
    }

    EXPECT_EQ(calls, 1);
}

TEST(ChangeSignalTest, AnObserverMayRunAnOperationOfItsOwn) {
    ChangeSignal signal;
    int calls = 0;
    signal.connect([&] {
        if (++calls > 1) return;
        const ChangeSignal::Scope scope{signal};
        signal.note();
    });

    {
        const ChangeSignal::Scope scope{signal};
        signal.note();
    }

    EXPECT_EQ(calls, 2);
}

}  // namespace
}  // namespace orvu
