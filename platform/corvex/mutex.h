// A lock that the thread which holds it may take again, and the guard that gives it back.
#pragma once

#include <mutex>

namespace corvex::threading {

// A recursive lock. It is free again when every `acquire` has been matched by a `release`.
class mutex_t {
public:
    mutex_t() = default;
    mutex_t(const mutex_t&) = delete;
    mutex_t& operator=(const mutex_t&) = delete;

    // Waits while another thread holds the lock. Throws `std::system_error` if the system refuses.
    void acquire() { mutex_.lock(); }

    // Only the thread that holds the lock may give it back.
    void release() { mutex_.unlock(); }

private:
    std::recursive_mutex mutex_;
};

// Holds a lock for the length of a scope. Does not own the lock, which has to outlive the guard.
class mutex_guard_t {
public:
    // Takes the lock, and the destructor gives it back.
    explicit mutex_guard_t(mutex_t& mutex) : mutex_(&mutex) { mutex_->acquire(); }
    ~mutex_guard_t() { mutex_->release(); }
    mutex_guard_t(const mutex_guard_t&) = delete;
    mutex_guard_t& operator=(const mutex_guard_t&) = delete;

private:
    mutex_t* mutex_;
};

}  // namespace corvex::threading
