#include <checkfence/assert.h>
#include <nodeline/functor/signal.h>

#include <algorithm>

namespace corvex::_internal {
namespace {

bool is_dead(const connection_t& connection) { return connection.subscriber == nullptr; }

auto find_slot(std::list<connection_t>& connections, const connection_t& wanted) {
    return std::find_if(connections.begin(), connections.end(), [&](const connection_t& other) {
        return other.object == wanted.object && other.method == wanted.method;
    });
}

}  // namespace

signal_base_t::signal_base_t() : signal_mutex_(new threading::mutex_t) {}

signal_base_t::~signal_base_t() {
    const bool emitting = emission_valid_ != nullptr;
    if (emitting) {
        *emission_valid_ = false;
    }
    _erase_all();
    if (!emitting) {
        delete signal_mutex_;
        signal_mutex_ = nullptr;
    }
}

void signal_base_t::_insert(const connection_t& connection) {
    const threading::mutex_guard_t guard(*signal_mutex_);
    if (connection.subscriber == nullptr) {
        CHECKFENCE_ASSERT(connection.subscriber != nullptr,
                          "signal_t::_insert: a connection needs a receiver and a slot");
        return;
    }
    if (find_slot(connections_, connection) != connections_.end()) {
        CHECKFENCE_ASSERT(false, "signal_t::_insert: this connection is already exists.");
        return;
    }
    // The node is made first: a reference must never stay behind with the subscriber when the
    // connection itself could not be stored.
    std::list<connection_t> appended(1, connection);
    connection.subscriber->attach(this);
    connections_.splice(connections_.end(), appended);
}

void signal_base_t::_erase(const connection_t& connection) {
    const threading::mutex_guard_t guard(*signal_mutex_);
    const auto found = find_slot(connections_, connection);
    const bool subscriber_found = found != connections_.end();
    if (!subscriber_found) {
        CHECKFENCE_ASSERT(subscriber_found,
                          "signal_t::disconnect: attempt to disconnect unknown connection");
        return;
    }
    if (emission_valid_ != nullptr) {
        *found = connection_t{};
    } else {
        connections_.erase(found);
    }
    if (connection.subscriber != nullptr) {
        connection.subscriber->detach(this);
    }
}

void signal_base_t::_erase_all() {
    const threading::mutex_guard_t guard(*signal_mutex_);
    for (connection_t& connection : connections_) {
        if (!is_dead(connection)) {
            connection.subscriber->detach(this);
        }
        if (emission_valid_ != nullptr) {
            connection = connection_t{};
        }
    }
    if (emission_valid_ == nullptr) {
        connections_.clear();
    }
}

void signal_base_t::on_subscriber_destroy(subscriber_base_t* subscriber) {
    const threading::mutex_guard_t guard(*signal_mutex_);
    const auto is_of_subscriber = [subscriber](const connection_t& connection) {
        return connection.subscriber == subscriber;
    };
    if (emission_valid_ != nullptr) {
        std::replace_if(connections_.begin(), connections_.end(), is_of_subscriber, connection_t{});
    } else {
        connections_.remove_if(is_of_subscriber);
    }
}

void signal_base_t::_emit(invoker_t invoke, void* arguments) const {
    onstack_signal_state_t state;
    if (!pre_call(state)) {
        return;
    }
    // The end is looked up in every round: a slot that is connected meanwhile is called as well.
    for (auto connection = connections_.begin(); connection != connections_.end(); ++connection) {
        if (!is_dead(*connection)) {
            try {
                invoke(*connection, arguments);
            } catch (...) {
                if (check_valid_state_after_call(state)) {
                    post_call(state);
                }
                throw;
            }
        }
        if (!check_valid_state_after_call(state)) {
            return;
        }
    }
    post_call(state);
}

bool signal_base_t::pre_call(onstack_signal_state_t& state) const {
    state.mutex = signal_mutex_;
    state.mutex->acquire();
    state.nested = emission_valid_ != nullptr;
    if (!state.nested) {
        emission_valid_ = &state.valid;
    }
    state.valid_ptr = emission_valid_;
    if (!*state.valid_ptr) {
        state.mutex->release();
        return false;
    }
    return true;
}

void signal_base_t::post_call(onstack_signal_state_t& state) const {
    if (*state.valid_ptr && !state.nested) {
        emission_valid_ = nullptr;
        connections_.remove_if(is_dead);
    }
    state.mutex->release();
}

bool signal_base_t::check_valid_state_after_call(onstack_signal_state_t& state) {
    if (*state.valid_ptr) {
        return true;
    }
    state.mutex->release();
    if (!state.nested) {
        delete state.mutex;
    }
    return false;
}

}  // namespace corvex::_internal
