#include <corvex/mutex.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <memory>
#include <stdexcept>
#include <thread>
#include <type_traits>

namespace nodeline::test {
namespace {

using corvex::threading::mutex_guard_t;
using corvex::threading::mutex_t;

static_assert(!std::is_copy_constructible_v<mutex_t>);
static_assert(!std::is_copy_constructible_v<mutex_guard_t>);

// Whether another thread gets the lock while this one goes on holding whatever it holds.
class OtherThread {
public:
    explicit OtherThread(mutex_t& mutex)
        : thread_([this, &mutex] {
              const mutex_guard_t guard(mutex);
              has_lock_ = true;
          }) {}

    bool GetsLockWithin(std::chrono::milliseconds time) const {
        const auto end = std::chrono::steady_clock::now() + time;
        while (!has_lock_ && std::chrono::steady_clock::now() < end) {
            std::this_thread::yield();
        }
        return has_lock_;
    }

    void Join() { thread_.join(); }

private:
    std::atomic<bool> has_lock_{false};
    std::thread thread_;
};

constexpr std::chrono::milliseconds kMoment{20};
constexpr std::chrono::seconds kLong{30};

TEST(Mutex, CanBeAcquiredAgainByTheThreadThatHoldsIt) {
    mutex_t mutex;
    mutex.acquire();
    mutex.acquire();
    mutex.release();
    OtherThread other(mutex);
    EXPECT_FALSE(other.GetsLockWithin(kMoment)) << "one release does not match two acquires";
    mutex.release();
    EXPECT_TRUE(other.GetsLockWithin(kLong));
    other.Join();
}

TEST(Mutex, GuardHoldsTheLockUntilTheEndOfItsScope) {
    mutex_t mutex;
    const auto held = [&] {
        const mutex_guard_t guard(mutex);
        auto other = std::make_unique<OtherThread>(mutex);
        EXPECT_FALSE(other->GetsLockWithin(kMoment));
        return other;
    };
    const auto other = held();
    EXPECT_TRUE(other->GetsLockWithin(kLong));
    other->Join();
}

TEST(Mutex, GuardGivesTheLockBackWhenAnExceptionUnwindsIt) {
    mutex_t mutex;
    EXPECT_THROW(
        {
            const mutex_guard_t guard(mutex);
            throw std::runtime_error("unwind");
        },
        std::runtime_error);
    OtherThread other(mutex);
    EXPECT_TRUE(other.GetsLockWithin(kLong));
    other.Join();
}

}  // namespace
}  // namespace nodeline::test
