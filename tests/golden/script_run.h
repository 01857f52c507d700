// A replay script that is run in the test.
#pragma once

#include <apps/cli/replay/replay.h>

#include <sstream>
#include <string>

namespace test_support {

struct ScriptRun {
    explicit ScriptRun(const std::string& text) {
        std::istringstream script(text);
        std::ostringstream out;
        is_done = nodeline::replay::RunReplay(script, out, error);
        printed = out.str();
    }

    bool is_done = false;
    std::string printed;
    nodeline::replay::ReplayError error;
};

}  // namespace test_support
