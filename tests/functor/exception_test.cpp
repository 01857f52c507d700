#include <functor/assertion_recorder.h>
#include <functor/listener.h>
#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>

namespace nodeline::test {
namespace {

class SlotFailure : public std::runtime_error {
public:
    explicit SlotFailure(int value) : std::runtime_error("slot failure"), number(value) {}
    int number;
};

class SlotException : public testing::Test {
protected:
    void ConnectAll() {
        signal->connect(&a, &Listener::Hear);
        signal->connect(&b, &Listener::Hear);
        signal->connect(&c, &Listener::Hear);
    }

    void Emit() const { (*signal)(); }

    Log log;
    std::unique_ptr<OpenSignal> signal = std::make_unique<OpenSignal>();
    Listener a{log, "a"};
    Listener b{log, "b"};
    Listener c{log, "c"};
};

TEST_F(SlotException, ReachesTheEmitterUnchangedAndLeavesOutLaterSlots) {
    ConnectAll();
    b.then = [] { throw SlotFailure(7); };
    try {
        Emit();
        FAIL() << "the exception was lost";
    } catch (const SlotFailure& failure) {
        EXPECT_EQ(failure.number, 7);
    }
    EXPECT_EQ(log, (Log{"a", "b"}));
}

TEST_F(SlotException, LeavesASignalThatEmitsAgain) {
    ConnectAll();
    b.then = [] { throw 1; };
    EXPECT_THROW(Emit(), int);
    b.then = {};
    log.clear();
    Emit();
    EXPECT_EQ(log, (Log{"a", "b", "c"}));
}

TEST_F(SlotException, SweepsTheDeadConnections) {
    const AssertionRecorder recorder;
    ConnectAll();
    a.then = [&] {
        signal->disconnect(&a, &Listener::Hear);
        signal->disconnect(&c, &Listener::Hear);
        throw 1;
    };
    EXPECT_THROW(Emit(), int);
    // The signal is idle again: this frees the node at once, and the walk after it is sound.
    signal->disconnect(&b, &Listener::Hear);
    signal->connect(&c, &Listener::Hear);
    Emit();
    EXPECT_EQ(log, (Log{"a", "c"}));
    EXPECT_TRUE(AssertionRecorder::Entries().empty());
}

TEST_F(SlotException, PassesThroughNestedEmissions) {
    ConnectAll();
    int depth = 0;
    a.then = [&] {
        if (++depth == 3) {
            throw SlotFailure(depth);
        }
        Emit();
    };
    EXPECT_THROW(Emit(), SlotFailure);
    EXPECT_EQ(log, (Log{"a", "a", "a"}));
    a.then = {};
    log.clear();
    Emit();
    EXPECT_EQ(log, (Log{"a", "b", "c"}));
}

TEST_F(SlotException, CaughtInASlotLetsTheOuterEmissionGoOn) {
    ConnectAll();
    a.then = [&] {
        signal->disconnect(&a, &Listener::Hear);
        b.then = [] { throw 1; };
        EXPECT_THROW(Emit(), int);
        b.then = {};
    };
    Emit();
    EXPECT_EQ(log, (Log{"a", "b", "b", "c"}));
}

TEST_F(SlotException, MayComeFromASlotThatDestroyedTheSignal) {
    ConnectAll();
    a.then = [&] {
        signal.reset();
        throw SlotFailure(2);
    };
    EXPECT_THROW(Emit(), SlotFailure);
    EXPECT_EQ(log, (Log{"a"}));
}

TEST_F(SlotException, MayComeFromASlotThatDestroyedTheSignalAtAnyDepth) {
    for (int deepest = 1; deepest <= 4; ++deepest) {
        log.clear();
        signal = std::make_unique<OpenSignal>();
        ConnectAll();
        int depth = 0;
        a.then = [&] {
            if (++depth == deepest) {
                signal.reset();
                throw SlotFailure(depth);
            }
            Emit();
        };
        EXPECT_THROW(Emit(), SlotFailure);
        EXPECT_EQ(log, Log(static_cast<std::size_t>(deepest), "a"));
    }
}

TEST_F(SlotException, CaughtInASlotAfterTheSignalDiedStillEndsTheOuterEmission) {
    ConnectAll();
    a.then = [&] {
        a.then = [&] {
            signal.reset();
            throw 1;
        };
        EXPECT_THROW(Emit(), int);
    };
    Emit();
    EXPECT_EQ(log, (Log{"a", "a"}));
}

TEST_F(SlotException, AfterANestedEmissionEndedWithTheSignalReachesTheEmitter) {
    ConnectAll();
    a.then = [&] {
        a.then = [&] { signal.reset(); };
        Emit();
        throw SlotFailure(4);
    };
    EXPECT_THROW(Emit(), SlotFailure);
    EXPECT_EQ(log, (Log{"a", "a"}));
}

TEST_F(SlotException, MayComeFromASubscriberThatDestroyedItself) {
    auto mortal = std::make_unique<Listener>(log, "mortal");
    signal->connect(mortal.get(), &Listener::Hear);
    signal->connect(&b, &Listener::Hear);
    mortal->then = [&] {
        mortal.reset();
        throw 1;
    };
    EXPECT_THROW(Emit(), int);
    Emit();
    EXPECT_EQ(log, (Log{"mortal", "b"}));
}

// An argument that cannot be copied more than once.
struct Fragile {
    Fragile() = default;
    Fragile(const Fragile& other) : copies(other.copies) {
        if (++*copies > 1) {
            throw SlotFailure(*copies);
        }
    }
    Fragile& operator=(const Fragile&) = delete;

    std::shared_ptr<int> copies = std::make_shared<int>(0);
};

struct FragileListener : subscriber_base_t {
    void Hear(const Fragile&) { ++calls; }
    int calls = 0;
};

TEST_F(SlotException, OfCopyingAnArgumentEndsTheEmissionLikeOneOfTheSlot) {
    signal_t<const Fragile&> by_reference;
    signal_t<Fragile> by_value;
    FragileListener first;
    FragileListener second;
    by_value.connect(&first, &FragileListener::Hear);
    by_value.connect(&second, &FragileListener::Hear);
    EXPECT_THROW(by_value(Fragile()), SlotFailure);
    EXPECT_EQ(first.calls, 1);
    EXPECT_EQ(second.calls, 0);
    by_value.disconnect(&second, &FragileListener::Hear);
    by_value(Fragile());
    EXPECT_EQ(first.calls, 2);
    by_reference.connect(&second, &FragileListener::Hear);
    by_reference(Fragile());
    EXPECT_EQ(second.calls, 1);
}

TEST_F(SlotException, OfAnAssertionHandlerGivesTheLockBack) {
    signal->connect(&a, &Listener::Hear);
    const auto before = checkfence::set_assertion_handler(
        [](const checkfence::assertion_t&) { throw SlotFailure(1); });
    EXPECT_THROW(signal->connect(&a, &Listener::Hear), SlotFailure);
    EXPECT_THROW(signal->disconnect(&b, &Listener::Hear), SlotFailure);
    checkfence::set_assertion_handler(before);
    Emit();
    EXPECT_EQ(log, (Log{"a"}));
}

}  // namespace
}  // namespace nodeline::test
