#include <apps/cli/commands.h>
#include <apps/cli/input.h>
#include <apps/cli/replay/replay.h>

#include <iostream>
#include <sstream>

namespace nodeline::cli {

void RunReplayScript(const std::string& path) {
    std::istringstream script(ReadInput(path));
    replay::ReplayError error;
    const bool is_done = replay::RunReplay(script, std::cout, error);
    FinishOutput();
    if (!is_done) throw Failure(kWrongUsage, Message(path, error.line, error.reason));
}

}  // namespace nodeline::cli
