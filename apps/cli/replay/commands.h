// The commands of replay scripts.
#pragma once

#include <apps/cli/replay/script_graph.h>
#include <apps/cli/replay/viewing.h>
#include <apps/cli/replay/words.h>

#include <cstddef>
#include <limits>
#include <string>
#include <string_view>
#include <unordered_map>

namespace nodeline::replay {

// What the commands of one run work on.
struct Session {
    ScriptGraph script;
    // What the command at hand prints.
    std::string printed;
    bool is_laid_out = false;
    // Looks at the graph, and prints its paints.
    Viewing viewing{script, printed};
};

// How many words follow the name of a command, and what is done.
struct Command {
    std::size_t least;
    std::size_t most;
    void (*run)(Session&, const Words&);
};

// For commands that take the rest of their line as it stands.
inline constexpr std::size_t kAnyCount = std::numeric_limits<std::size_t>::max();

using CommandTable = std::unordered_map<std::string_view, Command>;

// The commands that look at the graph through windows.
[[nodiscard]] const CommandTable& GetViewCommands();

// Carries out one line, which has at least one word. A line that cannot be carried out is a
// `ScriptFault`.
void RunCommand(Session& session, const Words& words);

}  // namespace nodeline::replay
