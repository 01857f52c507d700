// The commands of replay scripts.
#pragma once

#include <apps/cli/replay/script_graph.h>
#include <apps/cli/replay/words.h>

#include <string>

namespace nodeline::replay {

// What the commands of one run work on.
struct Session {
    ScriptGraph script;
    // What the command at hand prints.
    std::string printed;
    bool is_laid_out = false;
};

// Carries out one line, which has at least one word. A line that cannot be carried out is a
// `ScriptFault`.
void RunCommand(Session& session, const Words& words);

}  // namespace nodeline::replay
