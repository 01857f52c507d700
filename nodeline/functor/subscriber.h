// Subscriber: an object whose member functions signals may call.
#pragma once

#include <corvex/export.h>
#include <corvex/mutex.h>

#include <list>

namespace corvex::_internal {

class signal_base_t;

// The base of every receiver of signals. A subscriber knows the signals that it is connected to,
// and its death takes its connections away, so a signal never calls an object that is gone.
//
// The base dies after the derived parts. An object whose slots must not run while those parts are
// being taken down disconnects them first.
//
// A subscriber must not be destroyed on one thread while another connects or disconnects it.
class NODELINE_API subscriber_base_t {
public:
    subscriber_base_t() = default;

    // Connections belong to the object, not to its value: a copy starts without any, and an
    // assignment leaves both sides connected as they were.
    subscriber_base_t(const subscriber_base_t&) : subscriber_base_t() {}
    subscriber_base_t& operator=(const subscriber_base_t&) { return *this; }

    virtual ~subscriber_base_t();

private:
    friend class signal_base_t;

    void attach(signal_base_t* signal);
    void detach(signal_base_t* signal);

    std::list<signal_base_t*> signals_;  // one entry per connection, in order of connection
    threading::mutex_t mutex_;           // guards `signals_`
};

}  // namespace corvex::_internal

namespace nodeline {
using corvex::_internal::subscriber_base_t;
}  // namespace nodeline
