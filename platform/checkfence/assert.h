// Assertion: a condition that only a mistake in the calling code can break.
//
//   CHECKFENCE_ASSERT(index < size, "level_table: there is no such level");
//
// What a failure does is up to the installed handler, which may return. The code behind an
// assertion therefore copes with a broken condition: it leaves its data as they were and goes on.
#pragma once

#include <corvex/export.h>

namespace checkfence {

// A failed assertion. The texts are literals and live as long as the program.
struct assertion_t {
    const char* condition;  // the condition as it stands in the source
    const char* message;    // what the caller did wrong
    const char* file;
    int line;
    const char* function;  // with its parameters, as the compiler spells it
};

// A handler may end the program, throw, or return; after a return the asserting code goes on.
// It runs on the thread that failed, which may hold locks at that moment.
using assertion_handler_t = void (*)(const assertion_t& assertion);

// Installs `handler` for all threads and returns the one before it; null stands for the default.
// The default of a debug build writes the assertion to the standard error and aborts. The default
// of a release build, one compiled with `NDEBUG`, returns without a word.
NODELINE_API assertion_handler_t set_assertion_handler(assertion_handler_t handler) noexcept;

// The assertion function: passes a failure to the handler, and returns if that does.
NODELINE_API void assertion_failed(const char* condition, const char* message, const char* file,
                                   int line, const char* function);

}  // namespace checkfence

// Calls the assertion function if `condition` is false. Both arguments are used in every build.
#define CHECKFENCE_ASSERT(condition, message)                                       \
    do {                                                                            \
        if (!(condition)) {                                                         \
            ::checkfence::assertion_failed(#condition, message, __FILE__, __LINE__, \
                                           __PRETTY_FUNCTION__);                    \
        }                                                                           \
    } while (false)
