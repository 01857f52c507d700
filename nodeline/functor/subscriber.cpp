#include <nodeline/functor/signal_base.h>
#include <nodeline/functor/subscriber.h>

namespace corvex::_internal {

subscriber_base_t::~subscriber_base_t() {
    const threading::mutex_guard_t guard(mutex_);
    for (signal_base_t* const signal : signals_) {
        signal->on_subscriber_destroy(this);
    }
    signals_.clear();
}

void subscriber_base_t::attach(signal_base_t* signal) {
    const threading::mutex_guard_t guard(mutex_);
    signals_.push_back(signal);
}

void subscriber_base_t::detach(signal_base_t* signal) {
    const threading::mutex_guard_t guard(mutex_);
    signals_.remove(signal);
}

}  // namespace corvex::_internal
