#include <checkfence/assert.h>

#include <atomic>

#ifndef NDEBUG
#include <cstdio>
#include <cstdlib>
#endif

namespace checkfence {
namespace {

#ifdef NDEBUG
void handle_by_default(const assertion_t&) {}
#else
[[noreturn]] void handle_by_default(const assertion_t& assertion) {
    std::fprintf(stderr, "%s:%d: %s: assertion '%s' failed: %s\n", assertion.file, assertion.line,
                 assertion.function, assertion.condition, assertion.message);
    std::abort();
}
#endif

// Null for the default, so that assertions work before any static initialiser has run.
constinit std::atomic<assertion_handler_t> installed_handler{nullptr};

}  // namespace

assertion_handler_t set_assertion_handler(assertion_handler_t handler) noexcept {
    return installed_handler.exchange(handler);
}

void assertion_failed(const char* condition, const char* message, const char* file, int line,
                      const char* function) {
    const assertion_t assertion{condition, message, file, line, function};
    if (const assertion_handler_t handler = installed_handler.load()) {
        handler(assertion);
    } else {
        handle_by_default(assertion);
    }
}

}  // namespace checkfence
