// What signals leave behind on the heap. The program's allocations are counted here.
#include <gtest/gtest.h>
#include <nodeline/functor/signal.h>

#include <atomic>
#include <cstdlib>
#include <memory>
#include <new>

namespace {

std::atomic<long> blocks{0};          // allocated and not yet freed
std::atomic<long> until_failure{-1};  // allocations that still succeed; negative for all

}  // namespace

// Inlined, the two sides of a pair look mismatched to the compiler.
[[gnu::noinline]] void* operator new(std::size_t size) {
    if (until_failure >= 0 && until_failure-- == 0) {
        throw std::bad_alloc();
    }
    void* const block = std::malloc(size > 0 ? size : 1);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    ++blocks;
    return block;
}

[[gnu::noinline]] void operator delete(void* block) noexcept {
    if (block != nullptr) {
        --blocks;
    }
    std::free(block);
}

[[gnu::noinline]] void operator delete(void* block, std::size_t) noexcept {
    ::operator delete(block);
}

namespace nodeline::test {
namespace {

// A receiver without allocations of its own.
struct Actor : subscriber_base_t {
    void Act() {
        ++calls;
        if (action != nullptr) {
            action(*this);
        }
    }
    void (*action)(Actor& actor) = nullptr;
    signal_t<>* signal = nullptr;
    int calls = 0;
    long freed = 0;
};

// The blocks that `act` leaves behind.
template <class F>
long BlocksLeftBy(F act) {
    const long before = blocks;
    act();
    return blocks - before;
}

TEST(SignalMemory, CountsAllocations) {
    // Called by name, for a compiler may leave out a pair of expressions.
    void* block = nullptr;
    EXPECT_EQ(BlocksLeftBy([&] { block = ::operator new(1); }), 1);
    EXPECT_EQ(BlocksLeftBy([&] { ::operator delete(block); }), -1);
}

TEST(SignalMemory, IsFreedByAnIdleSignal) {
    Actor actor;
    EXPECT_EQ(BlocksLeftBy([&] {
                  signal_t<> signal;
                  signal.connect(&actor, &Actor::Act);
                  signal();
              }),
              0);
    EXPECT_EQ(actor.calls, 1);
}

TEST(SignalMemory, IsFreedByADisconnect) {
    Actor actor;
    signal_t<> signal;
    EXPECT_EQ(BlocksLeftBy([&] { signal.connect(&actor, &Actor::Act); }), 2);
    EXPECT_EQ(BlocksLeftBy([&] { signal.disconnect(&actor, &Actor::Act); }), -2);
}

TEST(SignalMemory, IsFreedByTheDeathOfASubscriber) {
    signal_t<> signal;
    EXPECT_EQ(BlocksLeftBy([&] {
                  Actor actor;
                  signal.connect(&actor, &Actor::Act);
              }),
              0);
}

TEST(SignalMemory, KeepsADeadConnectionUntilTheEmissionEnds) {
    Actor actor;
    signal_t<> signal;
    signal.connect(&actor, &Actor::Act);
    actor.signal = &signal;
    actor.action = [](Actor& self) {
        self.freed = -BlocksLeftBy([&] { self.signal->disconnect(&self, &Actor::Act); });
    };
    EXPECT_EQ(BlocksLeftBy([&] { signal(); }), -2);
    EXPECT_EQ(actor.freed, 1) << "only what the subscriber remembers goes at once";
}

TEST(SignalMemory, IsNotSweptByANestedEmission) {
    Actor actor;
    Actor other;
    signal_t<> signal;
    signal.connect(&actor, &Actor::Act);
    signal.connect(&other, &Actor::Act);
    actor.signal = &signal;
    actor.action = [](Actor& self) {
        self.signal->disconnect(&self, &Actor::Act);
        self.freed = -BlocksLeftBy([&] { (*self.signal)(); });
    };
    EXPECT_EQ(BlocksLeftBy([&] { signal(); }), -2);
    EXPECT_EQ(actor.freed, 0);
    EXPECT_EQ(other.calls, 2);
}

TEST(SignalMemory, IsFreedOnceByAnEmissionWhoseSignalDied) {
    Actor actor;
    Actor other;
    actor.action = [](Actor& self) { delete self.signal; };
    EXPECT_EQ(BlocksLeftBy([&] {
                  actor.signal = new signal_t<>;
                  actor.signal->connect(&actor, &Actor::Act);
                  actor.signal->connect(&other, &Actor::Act);
                  (*actor.signal)();
              }),
              0);
    EXPECT_EQ(other.calls, 0);
}

TEST(SignalMemory, IsFreedOnceByTheOutermostEmissionWhoseSignalDied) {
    Actor actor;
    actor.action = [](Actor& self) {
        if (self.calls < 4) {
            (*self.signal)();
        } else if (self.calls == 4) {
            delete self.signal;
        }
    };
    EXPECT_EQ(BlocksLeftBy([&] {
                  actor.signal = new signal_t<>;
                  actor.signal->connect(&actor, &Actor::Act);
                  (*actor.signal)();
              }),
              0);
    EXPECT_EQ(actor.calls, 4);
}

TEST(SignalMemory, IsFreedOnceWhenTheSlotThatDestroyedTheSignalThrows) {
    Actor actor;
    actor.action = [](Actor& self) {
        if (self.calls < 3) {
            (*self.signal)();
        } else {
            delete self.signal;
            throw 1;
        }
    };
    bool caught = false;
    EXPECT_EQ(BlocksLeftBy([&] {
                  actor.signal = new signal_t<>;
                  actor.signal->connect(&actor, &Actor::Act);
                  try {
                      (*actor.signal)();
                  } catch (int) {
                      caught = true;
                  }
              }),
              0);
    EXPECT_TRUE(caught);
}

// Connects with an allocation that fails after `successes` others. Answers whether it did.
bool ConnectionFails(signal_t<>& signal, Actor& actor, long successes) {
    until_failure = successes;
    bool failed = false;
    try {
        signal.connect(&actor, &Actor::Act);
    } catch (const std::bad_alloc&) {
        failed = true;
    }
    until_failure = -1;
    return failed;
}

TEST(SignalMemory, ThatRunsOutWhileConnectingLeavesBothEndsAsTheyWere) {
    for (const long successes : {0L, 1L}) {
        Actor actor;
        auto signal = std::make_unique<signal_t<>>();
        bool failed = false;
        EXPECT_EQ(BlocksLeftBy([&] { failed = ConnectionFails(*signal, actor, successes); }), 0);
        EXPECT_TRUE(failed);
        (*signal)();
        EXPECT_EQ(actor.calls, 0);
        signal->connect(&actor, &Actor::Act);
        (*signal)();
        EXPECT_EQ(actor.calls, 1);
        // The subscriber outlives the signal and must not remember it.
        signal.reset();
    }
}

TEST(SignalMemory, ThatSufficesForAConnectionIsTwoBlocks) {
    Actor actor;
    signal_t<> signal;
    EXPECT_FALSE(ConnectionFails(signal, actor, 2));
    signal();
    EXPECT_EQ(actor.calls, 1);
}

}  // namespace
}  // namespace nodeline::test
