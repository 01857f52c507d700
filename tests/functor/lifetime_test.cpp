#include <functor/listener.h>
#include <gtest/gtest.h>

#include <memory>
#include <optional>

namespace nodeline::test {
namespace {

// A signal that a slot can destroy, and three listeners.
class Lifetime : public testing::Test {
protected:
    void ConnectAll() {
        signal->connect(&a, &Listener::Hear);
        signal->connect(&b, &Listener::Hear);
        signal->connect(&c, &Listener::Hear);
    }

    void Emit() const { (*signal)(); }
    void DestroySignal() { signal.reset(); }

    Log log;
    std::unique_ptr<OpenSignal> signal = std::make_unique<OpenSignal>();
    Listener a{log, "a"};
    Listener b{log, "b"};
    Listener c{log, "c"};
};

TEST_F(Lifetime, SubscriberThatDiedIsNeverCalled) {
    auto mortal = std::make_unique<Listener>(log, "mortal");
    signal->connect(&a, &Listener::Hear);
    signal->connect(mortal.get(), &Listener::Hear);
    signal->connect(mortal.get(), &Listener::HearToo);
    signal->connect(&b, &Listener::Hear);
    mortal.reset();
    Emit();
    EXPECT_EQ(log, (Log{"a", "b"}));
}

TEST_F(Lifetime, SubscriberLeavesAllItsSignalsWhenItDies) {
    OpenSignal other;
    auto mortal = std::make_unique<Listener>(log, "mortal");
    signal->connect(mortal.get(), &Listener::Hear);
    other.connect(mortal.get(), &Listener::Hear);
    signal->connect(mortal.get(), &Listener::HearToo);
    mortal.reset();
    Emit();
    other();
    EXPECT_TRUE(log.empty());
}

TEST_F(Lifetime, SignalMayDieBeforeItsSubscribers) {
    auto mortal = std::make_unique<Listener>(log, "mortal");
    ConnectAll();
    signal->connect(mortal.get(), &Listener::Hear);
    signal->connect(mortal.get(), &Listener::HearToo);
    DestroySignal();
    mortal.reset();
    OpenSignal next;
    next.connect(&a, &Listener::Hear);
    next();
    EXPECT_EQ(log, (Log{"a"}));
}

TEST_F(Lifetime, NoSlotIsCalledAfterTheOneThatDestroysTheSignal) {
    ConnectAll();
    b.then = [&] { DestroySignal(); };
    Emit();
    EXPECT_EQ(log, (Log{"a", "b"}));
    EXPECT_EQ(signal, nullptr);
}

TEST_F(Lifetime, LastSlotMayDestroyTheSignal) {
    ConnectAll();
    c.then = [&] { DestroySignal(); };
    Emit();
    EXPECT_EQ(log, (Log{"a", "b", "c"}));
}

TEST_F(Lifetime, SignalMayDieInANestedEmission) {
    ConnectAll();
    a.then = [&] {
        a.then = {};
        b.then = [&] { DestroySignal(); };
        Emit();
        log.push_back("inner ended");
    };
    Emit();
    EXPECT_EQ(log, (Log{"a", "a", "b", "inner ended"}));
}

TEST_F(Lifetime, SignalMayDieAtAnyDepth) {
    for (int deepest = 1; deepest <= 5; ++deepest) {
        log.clear();
        signal = std::make_unique<OpenSignal>();
        ConnectAll();
        int depth = 0;
        a.then = [&] {
            if (++depth == deepest) {
                DestroySignal();
            } else {
                Emit();
            }
        };
        Emit();
        EXPECT_EQ(depth, deepest);
        EXPECT_EQ(log, Log(static_cast<std::size_t>(deepest), "a"));
    }
}

TEST_F(Lifetime, SignalMayDieBetweenNestedEmissions) {
    ConnectAll();
    a.then = [&] {
        a.then = {};
        Emit();
        DestroySignal();
    };
    Emit();
    EXPECT_EQ(log, (Log{"a", "a", "b", "c"}));
}

TEST_F(Lifetime, SignalMayDieWithDeadConnectionsInItsList) {
    ConnectAll();
    a.then = [&] {
        signal->disconnect(&a, &Listener::Hear);
        signal->disconnect(&c, &Listener::Hear);
    };
    b.then = [&] { DestroySignal(); };
    Emit();
    EXPECT_EQ(log, (Log{"a", "b"}));
}

TEST_F(Lifetime, BothEndsMayDieInOneSlot) {
    auto mortal = std::make_unique<Listener>(log, "mortal");
    signal->connect(mortal.get(), &Listener::Hear);
    signal->connect(&b, &Listener::Hear);
    mortal->then = [&] {
        mortal.reset();
        DestroySignal();
    };
    Emit();
    EXPECT_EQ(log, (Log{"mortal"}));

    signal = std::make_unique<OpenSignal>();
    mortal = std::make_unique<Listener>(log, "mortal");
    mortal->then = [&] {
        DestroySignal();
        mortal.reset();
    };
    signal->connect(mortal.get(), &Listener::Hear);
    signal->connect(&b, &Listener::Hear);
    Emit();
    EXPECT_EQ(log, (Log{"mortal", "mortal"}));
}

TEST_F(Lifetime, SubscribersMayDieAfterASignalThatDiedEmitting) {
    auto mortal = std::make_unique<Listener>(log, "mortal");
    signal->connect(&a, &Listener::Hear);
    signal->connect(mortal.get(), &Listener::Hear);
    a.then = [&] { DestroySignal(); };
    Emit();
    mortal.reset();
    EXPECT_EQ(log, (Log{"a"}));
}

TEST_F(Lifetime, OwnerOfASignalMayDieInItsSlot) {
    struct Button {
        int presses = 0;
        signal_t<> OnPress;
        void Press() {
            ++presses;
            OnPress();
        }
    };
    auto button = std::make_unique<Button>();
    button->OnPress.connect(&a, &Listener::Hear);
    button->OnPress.connect(&b, &Listener::Hear);
    a.then = [&] { button.reset(); };
    button->Press();
    EXPECT_EQ(log, (Log{"a"}));
}

TEST_F(Lifetime, NewSignalInTheSamePlaceIsLeftAlone) {
    std::optional<OpenSignal> reborn;
    reborn.emplace();
    reborn->connect(&a, &Listener::Hear);
    reborn->connect(&b, &Listener::Hear);
    a.then = [&] {
        a.then = {};
        reborn.emplace();
        reborn->connect(&c, &Listener::Hear);
    };
    (*reborn)();
    EXPECT_EQ(log, (Log{"a"}));
    (*reborn)();
    EXPECT_EQ(log, (Log{"a", "c"}));
    // The lock of the new signal is in order, and nothing is left of the old emission.
    reborn->disconnect(&c, &Listener::Hear);
    (*reborn)();
    EXPECT_EQ(log, (Log{"a", "c"}));
}

TEST_F(Lifetime, NewSignalMayEmitWhileTheEmissionOfTheOldOneUnwinds) {
    std::optional<OpenSignal> reborn;
    reborn.emplace();
    reborn->connect(&a, &Listener::Hear);
    reborn->connect(&b, &Listener::Hear);
    a.then = [&] {
        a.then = {};
        reborn.emplace();
        reborn->connect(&c, &Listener::Hear);
        (*reborn)();
    };
    (*reborn)();
    (*reborn)();
    EXPECT_EQ(log, (Log{"a", "c", "c"}));
}

TEST_F(Lifetime, CopyOfASubscriberStartsWithoutConnections) {
    signal->connect(&a, &Listener::Hear);
    auto copy = std::optional<Listener>(a);
    Emit();
    EXPECT_EQ(log, (Log{"a"}));
    copy.reset();
    Emit();
    EXPECT_EQ(log, (Log{"a", "a"})) << "the copy took the connection of the original with it";
}

TEST_F(Lifetime, CopyOfASubscriberMayOutliveTheSignal) {
    signal->connect(&a, &Listener::Hear);
    auto copy = std::optional<Listener>(a);
    DestroySignal();
    copy.reset();
    a.Hear();
    EXPECT_EQ(log, (Log{"a"}));
}

TEST_F(Lifetime, AssignedSubscriberKeepsItsOwnConnections) {
    auto mortal = std::make_unique<Listener>(log, "mortal");
    signal->connect(mortal.get(), &Listener::Hear);
    signal->connect(&a, &Listener::HearToo);
    *mortal = b;
    Emit();
    EXPECT_EQ(log, (Log{"b", "a too"})) << "the value is assigned, the connection stays";
    mortal.reset();
    Emit();
    EXPECT_EQ(log, (Log{"b", "a too", "a too"}));
}

}  // namespace
}  // namespace nodeline::test
