// Signal: an event of an object, which calls the member functions that others have connected to it.
//
//   class Lens {
//   public:
//       signal_t<point<double>> OnMove;
//   };
//
//   class StatusLine : public subscriber_base_t {
//   public:
//       void ShowPoint(point<double> p);
//   };
//
//   lens.OnMove.connect(&status_line, &StatusLine::ShowPoint);
//   lens.OnMove(point<double>{1.0, 2.0});
//
// Slots are called in the order of connection. Either end may die first. A slot may disconnect
// itself or others, connect new slots (they are called in the same emission), emit the same signal
// again, and destroy receivers or the signal itself.
//
// A slot may throw: the slots after it are left out, and the exception reaches the emitter.
//
// Emissions of one signal on several threads follow one another: a signal is locked while its slots
// run, for connecting and disconnecting as well.
#pragma once

#include <nodeline/functor/signal_base.h>

#include <type_traits>

namespace corvex::_internal {

// Fills the places of a signature that hold no argument.
struct dummy_t {};

// The arguments of a signature, without the places that hold none.
template <class... A>
struct arguments_t {};

// Goes through the places of a signature and collects the arguments in `Used`.
template <class Used, class... Rest>
struct used_arguments {
    // `arguments_t` of them, in their order.
    using type = Used;
};

template <class... Used, class First, class... Rest>
struct used_arguments<arguments_t<Used...>, First, Rest...>
    : used_arguments<arguments_t<Used..., First>, Rest...> {};

template <class... Used, class... Rest>
struct used_arguments<arguments_t<Used...>, dummy_t, Rest...>
    : used_arguments<arguments_t<Used...>, Rest...> {};

template <class C, class M, class A1 = dummy_t, class A2 = dummy_t, class A3 = dummy_t,
          class A4 = dummy_t, class A5 = dummy_t, class A6 = dummy_t>
class signal_templ;

// What a `signal_templ` does, with its arguments as one pack.
template <class C, class M, class Arguments>
class signature_t;

// The call of a slot `M` of the class `C`.
template <class C, class M, class... A>
class NODELINE_API signature_t<C, M, arguments_t<A...>> : public signal_base_t {
public:
    // Calls the member function `method` of `object`, which is a `C`.
    static void caster(void* object, typeless_connection_t method, A... arguments) {
        (static_cast<C*>(object)->*method.to<M>())(static_cast<A&&>(arguments)...);
    }
};

// The signal itself: emission, and the wrappers that make a connection typeless.
template <class... A>
class NODELINE_API signature_t<dummy_t, dummy_t, arguments_t<A...>> : public signal_base_t {
public:
    // Emits: calls every slot. An argument that is a value is copied anew for each slot, a
    // reference is the emitter's own, so that a slot sees what the one before it changed.
    // Linear in the number of connections.
    void operator()(A... arguments) const {
        auto call = [&](const connection_t& connection) {
            const auto caster = reinterpret_cast<caster_t>(connection.caster);
            caster(connection.object, connection.method, arguments...);
        };
        _emit(&invoke<decltype(call)>, &call);
    }

    // Connects a member function of `receiver`, whose class derives from `subscriber_base_t`. The
    // slot may be declared in a base of that class and may be const; it returns nothing. If its
    // name is overloaded, the one that takes exactly the arguments of the signal is meant. Another
    // signal is connected with `connect(&other, &signal_t<...>::operator())`.
    //
    // Receiver and slot must not be null, and must not be connected to each other already; that is
    // an assertion and changes nothing. Linear in the number of connections.
    template <class R, class C>
    void connect(R* receiver, void (C::*slot)(A...)) {
        _insert(make_connection(receiver, slot));
    }
    template <class R, class C>
    void connect(R* receiver, void (C::*slot)(A...) const) {
        _insert(make_connection(receiver, slot));
    }
    template <class R, class C, class F>
    void connect(R* receiver, F C::*slot) {
        _insert(make_connection(receiver, slot));
    }

    // Takes a connection away; one that is not there is an assertion and changes nothing.
    //
    // A receiver with several slots on one signal disconnects either none of them before it dies,
    // or all: the first `disconnect` makes it forget the signal.
    template <class R, class C>
    void disconnect(R* receiver, void (C::*slot)(A...)) {
        _erase(make_connection(receiver, slot));
    }
    template <class R, class C>
    void disconnect(R* receiver, void (C::*slot)(A...) const) {
        _erase(make_connection(receiver, slot));
    }
    template <class R, class C, class F>
    void disconnect(R* receiver, F C::*slot) {
        _erase(make_connection(receiver, slot));
    }

protected:
    // The connection of a slot; a dead one if the receiver or the slot is null.
    template <class R, class C, class F>
    static connection_t make_connection(R* receiver, F C::*slot) {
        using M = F C::*;
        static_assert(std::is_convertible_v<R*, subscriber_base_t*>,
                      "a receiver is not const and has one subscriber_base_t as a public base");
        static_assert(std::is_convertible_v<R*, C*>, "the slot belongs to the receiver's class");
        static_assert(std::is_invocable_v<M, C&, A...>, "the slot takes the signal's arguments");
        static_assert(std::is_void_v<std::invoke_result_t<M, C&, A...>>, "a slot returns nothing");
        if (receiver == nullptr || slot == nullptr) {
            return connection_t{};
        }
        C* const object = receiver;
        return connection_t{object, receiver, typeless_connection_t::from(slot),
                            reinterpret_cast<void (*)()>(&signal_templ<C, M, A...>::caster)};
    }

private:
    using caster_t = void (*)(void* object, typeless_connection_t method, A... arguments);

    template <class Call>
    static void invoke(const connection_t& connection, void* call) {
        (*static_cast<Call*>(call))(connection);
    }
};

// With `C` and `M` both `dummy_t`, a signal of up to six arguments. With a class and the type of
// one of its member functions, only the static `caster` that calls such a function.
template <class C, class M, class A1, class A2, class A3, class A4, class A5, class A6>
class NODELINE_API signal_templ
    : public signature_t<C, M,
                         typename used_arguments<arguments_t<>, A1, A2, A3, A4, A5, A6>::type> {};

// A signal of up to six arguments, to be a member or a base of the class that emits it. It can be
// connected to other signals, is not copyable, and does not own its receivers.
template <class A1 = dummy_t, class A2 = dummy_t, class A3 = dummy_t, class A4 = dummy_t,
          class A5 = dummy_t, class A6 = dummy_t>
class NODELINE_API signal_t : public signal_templ<dummy_t, dummy_t, A1, A2, A3, A4, A5, A6> {};

}  // namespace corvex::_internal

namespace nodeline {
using corvex::_internal::signal_t;
}  // namespace nodeline
