// Connection list: what every signal does without knowing the types of its arguments.
#pragma once

#include <corvex/export.h>
#include <corvex/mutex.h>
#include <nodeline/functor/subscriber.h>

#include <array>
#include <cstdint>
#include <cstring>
#include <list>

namespace corvex::_internal {

// A pointer to member function whose type has been forgotten: its bytes, two machine words.
struct typeless_connection_t {
    // Forgets the type of a pointer to member function.
    template <class M>
    static typeless_connection_t from(M method) {
        typeless_connection_t typeless;
        static_assert(sizeof(M) == sizeof(typeless.words), "a member pointer has two words");
        std::memcpy(typeless.words.data(), &method, sizeof(method));
        return typeless;
    }

    // `M` is the type that `from` was given.
    template <class M>
    [[nodiscard]] M to() const {
        M method = nullptr;
        static_assert(sizeof(M) == sizeof(words), "a member pointer has two words");
        std::memcpy(&method, words.data(), sizeof(method));
        return method;
    }

    // By their bytes.
    friend bool operator==(const typeless_connection_t&, const typeless_connection_t&) = default;

    // As the compiler lays such a pointer out; zero for none.
    std::array<std::uintptr_t, 2> words{};
};

// One slot of one receiver. `object` and `method` are its identity within a signal.
// A connection without a subscriber is dead, and then all of its words are zero.
struct connection_t {
    void* object = nullptr;                   // as the class that declares the slot
    subscriber_base_t* subscriber = nullptr;  // the same receiver
    typeless_connection_t method;
    void (*caster)() = nullptr;  // takes `object`, `method` and the arguments, calls the slot
};
static_assert(sizeof(connection_t) == 5 * sizeof(void*));

// One running emission. It lives on the stack of the emitter and so outlives a signal that one of
// its slots destroys.
struct onstack_signal_state_t {
    threading::mutex_t* mutex = nullptr;
    bool valid = true;          // cleared by the death of the signal, if this is the outermost
    bool* valid_ptr = nullptr;  // the flag in force: `valid` of the outermost emission
    bool nested = false;        // whether the signal was already emitting
};

// The connections of a signal, their order, and the course of an emission.
//
// An emission walks the list itself, under the lock of the signal. While one runs, a connection
// that is taken away only becomes dead and keeps its place; the end of the outermost emission
// sweeps the dead ones out. The lock lies apart from the signal, because an emission that outlives
// the signal still holds it.
//
// Order of locks: first the signal's, then a subscriber's. The death of a subscriber takes them the
// other way round.
class NODELINE_API signal_base_t : public subscriber_base_t {
public:
    signal_base_t();
    signal_base_t(const signal_base_t&) = delete;
    signal_base_t& operator=(const signal_base_t&) = delete;

    // Takes all connections away. A running emission ends after the slot that it is in.
    ~signal_base_t() override;

protected:
    // Calls the slot of `connection` with the arguments that `arguments` stands for.
    using invoker_t = void (*)(const connection_t& connection, void* arguments);

    // Appends a connection. One with the same identity must not be there yet.
    // If it throws, nothing has changed.
    void _insert(const connection_t& connection);

    // Takes the connection of the same identity away, and every reference that the subscriber
    // holds to this signal, also if more of its slots are connected: such a subscriber has to
    // disconnect them all before it dies. A null `connection.subscriber` leaves the references.
    void _erase(const connection_t& connection);

    // Takes all connections away.
    void _erase_all();

    // Calls the live connections in order.
    void _emit(invoker_t invoke, void* arguments) const;

private:
    friend class subscriber_base_t;

    // Takes away what is connected to `subscriber`, without touching its references.
    void on_subscriber_destroy(subscriber_base_t* subscriber);

    // Opens an emission and takes the lock. False if the signal is already dying: then the lock has
    // been given back and no slot may run.
    bool pre_call(onstack_signal_state_t& state) const;

    // Closes an emission of a signal that has outlived it.
    void post_call(onstack_signal_state_t& state) const;

    // Whether the signal has outlived the last call. If not, this closes the emission. It is static
    // because there may be no signal left to call it on.
    static bool check_valid_state_after_call(onstack_signal_state_t& state);

    // An emission does not change which slots are connected, so it counts as const.
    mutable std::list<connection_t> connections_;  // in order of connection
    mutable bool* emission_valid_ = nullptr;       // the flag in force; null if nothing runs
    threading::mutex_t* signal_mutex_;
};

}  // namespace corvex::_internal
