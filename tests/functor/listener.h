// Receivers and signals for tests: who was called, in which order, and what a slot does besides.
#pragma once

#include <nodeline/functor/signal.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace nodeline::test {

using Log = std::vector<std::string>;

// Writes its name into the log when it is called, then carries out `then`. May die in `then`.
class Listener : public subscriber_base_t {
public:
    Listener(Log& log, std::string name, std::function<void()> action = {})
        : then(std::move(action)), log_(&log), name_(std::move(name)) {}

    void Hear() {
        log_->push_back(name_);
        // A copy on the stack outlives the listener.
        if (const auto action = then) {
            action();
        }
    }

    void HearToo() { log_->push_back(name_ + " too"); }

    std::function<void()> then;

private:
    Log* log_;
    std::string name_;
};

// A signal whose typeless operations are open.
class OpenSignal : public signal_t<> {
public:
    using signal_t<>::make_connection;
    using signal_t<>::_erase;
    using signal_t<>::_erase_all;
    using signal_t<>::_insert;
};

}  // namespace nodeline::test
