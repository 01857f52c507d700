#include <functor/assertion_recorder.h>
#include <functor/listener.h>
#include <gtest/gtest.h>

#include <memory>

namespace nodeline::test {
namespace {

// A signal and three listeners, to be connected and given something to do by each test.
class Emission : public testing::Test {
protected:
    void ConnectAll() {
        signal.connect(&a, &Listener::Hear);
        signal.connect(&b, &Listener::Hear);
        signal.connect(&c, &Listener::Hear);
    }

    Log log;
    OpenSignal signal;
    Listener a{log, "a"};
    Listener b{log, "b"};
    Listener c{log, "c"};
};

TEST_F(Emission, WithoutConnectionsDoesNothing) {
    signal();
    signal();
    EXPECT_TRUE(log.empty());
    signal.connect(&a, &Listener::Hear);
    signal();
    EXPECT_EQ(log, (Log{"a"}));
}

TEST_F(Emission, OfAConstSignalCallsItsSlots) {
    ConnectAll();
    const signal_t<>& constant = signal;
    constant();
    EXPECT_EQ(log, (Log{"a", "b", "c"}));
}

TEST_F(Emission, GoesOnAfterASlotThatDisconnectsItself) {
    ConnectAll();
    a.then = [&] { signal.disconnect(&a, &Listener::Hear); };
    signal();
    EXPECT_EQ(log, (Log{"a", "b", "c"}));
    signal();
    EXPECT_EQ(log, (Log{"a", "b", "c", "b", "c"}));
}

TEST_F(Emission, GoesOnWhenEverySlotDisconnectsItself) {
    ConnectAll();
    for (Listener* const listener : {&a, &b, &c}) {
        listener->then = [this, listener] { signal.disconnect(listener, &Listener::Hear); };
    }
    signal();
    signal();
    EXPECT_EQ(log, (Log{"a", "b", "c"}));
}

TEST_F(Emission, PassesOverALaterSlotThatWasDisconnectedMeanwhile) {
    ConnectAll();
    a.then = [&] { signal.disconnect(&b, &Listener::Hear); };
    signal();
    EXPECT_EQ(log, (Log{"a", "c"}));
}

TEST_F(Emission, PassesOverTheLastSlotThatWasDisconnectedMeanwhile) {
    ConnectAll();
    b.then = [&] { signal.disconnect(&c, &Listener::Hear); };
    signal();
    EXPECT_EQ(log, (Log{"a", "b"}));
}

TEST_F(Emission, GoesOnAfterAnEarlierSlotWasDisconnected) {
    ConnectAll();
    b.then = [&] { signal.disconnect(&a, &Listener::Hear); };
    signal();
    EXPECT_EQ(log, (Log{"a", "b", "c"}));
    b.then = {};
    signal();
    EXPECT_EQ(log, (Log{"a", "b", "c", "b", "c"}));
}

TEST_F(Emission, CallsASlotThatWasConnectedMeanwhile) {
    signal.connect(&a, &Listener::Hear);
    a.then = [&] { signal.connect(&b, &Listener::Hear); };
    signal();
    EXPECT_EQ(log, (Log{"a", "b"}));
}

TEST_F(Emission, CallsASlotAgainThatReconnectsItself) {
    ConnectAll();
    a.then = [&] {
        a.then = {};
        signal.disconnect(&a, &Listener::Hear);
        signal.connect(&a, &Listener::Hear);
    };
    signal();
    EXPECT_EQ(log, (Log{"a", "b", "c", "a"}));
    log.clear();
    signal();
    EXPECT_EQ(log, (Log{"b", "c", "a"}));
}

TEST_F(Emission, DisconnectingADeadConnectionIsUnknown) {
    const AssertionRecorder recorder;
    ConnectAll();
    a.then = [&] {
        signal.disconnect(&b, &Listener::Hear);
        signal.disconnect(&b, &Listener::Hear);
    };
    signal();
    EXPECT_EQ(AssertionRecorder::Entries().size(), 1U);
    EXPECT_EQ(log, (Log{"a", "c"}));
}

TEST_F(Emission, EndsAfterASlotThatErasesAllConnections) {
    ConnectAll();
    b.then = [&] { signal._erase_all(); };
    signal();
    EXPECT_EQ(log, (Log{"a", "b"}));
    signal();
    EXPECT_EQ(log, (Log{"a", "b"}));
}

TEST_F(Emission, CallsWhatIsConnectedAfterAllWasErased) {
    ConnectAll();
    a.then = [&] {
        signal._erase_all();
        signal.connect(&c, &Listener::Hear);
    };
    signal();
    EXPECT_EQ(log, (Log{"a", "c"}));
}

TEST_F(Emission, OfTheSameSignalFromASlotCallsAllFromTheFront) {
    ConnectAll();
    b.then = [&] {
        b.then = {};
        signal();
    };
    signal();
    EXPECT_EQ(log, (Log{"a", "b", "a", "b", "c", "c"}));
}

TEST_F(Emission, NestedPassesOverTheDeadAndLeavesThemToTheOuter) {
    ConnectAll();
    // The outer emission stands on the dead connection while the inner one runs and ends.
    a.then = [&] {
        signal.disconnect(&a, &Listener::Hear);
        signal();
        log.push_back("inner ended");
    };
    signal();
    EXPECT_EQ(log, (Log{"a", "b", "c", "inner ended", "b", "c"}));
    log.clear();
    signal();
    EXPECT_EQ(log, (Log{"b", "c"}));
}

TEST_F(Emission, StaysInForceAfterANestedOneHasEnded) {
    ConnectAll();
    // A node that was freed here would take the outer walk with it.
    a.then = [&] {
        a.then = {};
        signal();
        signal.disconnect(&a, &Listener::Hear);
        signal.disconnect(&b, &Listener::Hear);
    };
    signal();
    EXPECT_EQ(log, (Log{"a", "a", "b", "c", "c"}));
}

TEST_F(Emission, OuterCallsWhatANestedOneConnected) {
    Listener d(log, "d");
    ConnectAll();
    a.then = [&] {
        a.then = {};
        b.then = [&] {
            b.then = {};
            signal.connect(&d, &Listener::Hear);
        };
        signal();
    };
    signal();
    EXPECT_EQ(log, (Log{"a", "a", "b", "c", "d", "b", "c", "d"}));
}

TEST_F(Emission, CanBeNestedDeeply) {
    int depth = 0;
    signal.connect(&a, &Listener::Hear);
    a.then = [&] {
        if (++depth < 100) {
            signal();
        }
    };
    signal();
    EXPECT_EQ(depth, 100);
    EXPECT_EQ(log.size(), 100U);
}

TEST_F(Emission, PassesOverASubscriberThatDiedMeanwhile) {
    auto mortal = std::make_unique<Listener>(log, "mortal");
    signal.connect(&a, &Listener::Hear);
    signal.connect(mortal.get(), &Listener::Hear);
    signal.connect(mortal.get(), &Listener::HearToo);
    signal.connect(&c, &Listener::Hear);
    a.then = [&] { mortal.reset(); };
    signal();
    signal();
    EXPECT_EQ(log, (Log{"a", "c", "a", "c"}));
}

TEST_F(Emission, GoesOnAfterASubscriberThatDestroysItself) {
    auto mortal = std::make_unique<Listener>(log, "mortal");
    mortal->then = [&] { mortal.reset(); };
    signal.connect(&a, &Listener::Hear);
    signal.connect(mortal.get(), &Listener::Hear);
    signal.connect(&c, &Listener::Hear);
    signal();
    signal();
    EXPECT_EQ(log, (Log{"a", "mortal", "c", "a", "c"}));
}

TEST_F(Emission, NestedKillsASubscriberThatTheOuterStandsOn) {
    auto mortal = std::make_unique<Listener>(log, "mortal");
    signal.connect(mortal.get(), &Listener::Hear);
    signal.connect(&b, &Listener::Hear);
    mortal->then = [&] {
        mortal->then = {};
        b.then = [&] { mortal.reset(); };
        signal();
    };
    signal();
    EXPECT_EQ(log, (Log{"mortal", "mortal", "b", "b"}));
    log.clear();
    signal();
    EXPECT_EQ(log, (Log{"b"}));
}

TEST_F(Emission, CallsASubscriberThatIsBornMeanwhile) {
    std::unique_ptr<Listener> child;
    signal.connect(&a, &Listener::Hear);
    a.then = [&] {
        a.then = {};
        child = std::make_unique<Listener>(log, "child");
        signal.connect(child.get(), &Listener::Hear);
    };
    signal();
    EXPECT_EQ(log, (Log{"a", "child"}));
}

}  // namespace
}  // namespace nodeline::test
