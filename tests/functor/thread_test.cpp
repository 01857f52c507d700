#include <gtest/gtest.h>
#include <nodeline/functor/signal.h>

#include <atomic>
#include <chrono>
#include <functional>
#include <memory>
#include <thread>

namespace nodeline::test {
namespace {

constexpr std::chrono::milliseconds kMoment{20};

// Notices when two threads are in its slot at once. `calls` is plain: the signal's lock guards it,
// and nothing else does. The atomics order nothing, or they would hide a race from the sanitizer.
struct Gauge : subscriber_base_t {
    void Hear() {
        if (inside.fetch_add(1, std::memory_order_relaxed) != 0) {
            overlapped.store(true, std::memory_order_relaxed);
        }
        ++calls;
        std::this_thread::yield();
        inside.fetch_sub(1, std::memory_order_relaxed);
    }
    std::atomic<int> inside{0};
    std::atomic<bool> overlapped{false};
    int calls = 0;
};

// Runs `action` in its slot.
struct Actor : subscriber_base_t {
    void Act() { action(); }
    void Nothing() { ++calls; }
    std::function<void()> action;
    int calls = 0;
};

TEST(SignalThreads, EmissionsOfOneSignalAreSerialised) {
    constexpr int kEmissions = 2000;
    Gauge gauge;
    signal_t<> signal;
    signal.connect(&gauge, &Gauge::Hear);
    const auto emit = [&] {
        for (int i = 0; i < kEmissions; ++i) {
            signal();
        }
    };
    std::thread first(emit);
    std::thread second(emit);
    first.join();
    second.join();
    EXPECT_FALSE(gauge.overlapped);
    EXPECT_EQ(gauge.calls, 2 * kEmissions);
}

TEST(SignalThreads, EmittingAndConnectingAtOnceAreSerialised) {
    constexpr int kRounds = 2000;
    Gauge steady;
    Gauge passing;
    signal_t<> signal;
    signal.connect(&steady, &Gauge::Hear);
    std::thread emitter([&] {
        for (int i = 0; i < kRounds; ++i) {
            signal();
        }
    });
    std::thread connector([&] {
        for (int i = 0; i < kRounds; ++i) {
            signal.connect(&passing, &Gauge::Hear);
            signal.disconnect(&passing, &Gauge::Hear);
        }
    });
    emitter.join();
    connector.join();
    EXPECT_EQ(steady.calls, kRounds);
    const int calls_before = passing.calls;
    EXPECT_LE(calls_before, kRounds);
    signal();
    EXPECT_EQ(passing.calls, calls_before);
    EXPECT_EQ(steady.calls, kRounds + 1);
}

// Runs `action` on a second thread while a slot of `signal` runs on this one. Answers whether it
// was done before the slot had ended.
bool IsDoneWithinASlot(signal_t<>& signal, const std::function<void()>& action) {
    std::atomic<bool> done{false};
    bool done_within = false;
    std::thread other;
    Actor actor;
    actor.action = [&] {
        other = std::thread([&] {
            action();
            done = true;
        });
        std::this_thread::sleep_for(kMoment);
        done_within = done;
    };
    signal.connect(&actor, &Actor::Act);
    signal();
    other.join();
    EXPECT_TRUE(done);
    signal.disconnect(&actor, &Actor::Act);
    return done_within;
}

TEST(SignalThreads, ConnectingWaitsForTheEndOfAnEmission) {
    signal_t<> signal;
    Actor late;
    EXPECT_FALSE(IsDoneWithinASlot(signal, [&] { signal.connect(&late, &Actor::Nothing); }));
    EXPECT_EQ(late.calls, 0);
    signal();
    EXPECT_EQ(late.calls, 1);
}

TEST(SignalThreads, DisconnectingWaitsForTheEndOfAnEmission) {
    signal_t<> signal;
    Actor early;
    signal.connect(&early, &Actor::Nothing);
    EXPECT_FALSE(IsDoneWithinASlot(signal, [&] { signal.disconnect(&early, &Actor::Nothing); }));
    signal();
    EXPECT_EQ(early.calls, 1);
}

TEST(SignalThreads, DeathOfASubscriberWaitsForTheEndOfAnEmission) {
    signal_t<> signal;
    auto mortal = std::make_unique<Actor>();
    signal.connect(mortal.get(), &Actor::Nothing);
    EXPECT_FALSE(IsDoneWithinASlot(signal, [&] { mortal.reset(); }));
    signal();
    EXPECT_EQ(mortal, nullptr);
}

TEST(SignalThreads, OtherSignalsAreNotHeldUp) {
    signal_t<> signal;
    signal_t<> other;
    Gauge gauge;
    other.connect(&gauge, &Gauge::Hear);
    std::atomic<bool> done{false};
    std::thread thread;
    Actor actor;
    actor.action = [&] {
        thread = std::thread([&] {
            other();
            done = true;
        });
        const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (!done && std::chrono::steady_clock::now() < end) {
            std::this_thread::yield();
        }
        EXPECT_TRUE(done);
    };
    signal.connect(&actor, &Actor::Act);
    signal();
    thread.join();
    EXPECT_EQ(gauge.calls, 1);
}

TEST(SignalThreads, LockIsFreeAfterASlotThatThrewOrNested) {
    signal_t<> signal;
    Gauge gauge;
    Actor actor;
    int depth = 0;
    actor.action = [&] {
        if (++depth < 3) {
            signal();
        } else if (depth == 3) {
            throw 1;
        }
    };
    signal.connect(&actor, &Actor::Act);
    EXPECT_THROW(signal(), int);
    signal.connect(&gauge, &Gauge::Hear);
    std::thread other([&] { signal(); });
    other.join();
    EXPECT_EQ(gauge.calls, 1);
}

}  // namespace
}  // namespace nodeline::test
