// Collects failed assertions for the length of a test, and lets the code behind them go on.
#pragma once

#include <checkfence/assert.h>

#include <string>
#include <vector>

namespace nodeline::test {

class AssertionRecorder {
public:
    struct Entry {
        std::string condition;
        std::string message;
        std::string file;
        int line = 0;
        std::string function;
    };

    AssertionRecorder() : before_(checkfence::set_assertion_handler(&Record)) { Entries().clear(); }
    ~AssertionRecorder() { checkfence::set_assertion_handler(before_); }
    AssertionRecorder(const AssertionRecorder&) = delete;
    AssertionRecorder& operator=(const AssertionRecorder&) = delete;

    static std::vector<Entry>& Entries() {
        static std::vector<Entry> entries;
        return entries;
    }

private:
    static void Record(const checkfence::assertion_t& assertion) {
        Entries().push_back({assertion.condition, assertion.message, assertion.file, assertion.line,
                             assertion.function});
    }

    checkfence::assertion_handler_t before_;
};

}  // namespace nodeline::test
