#include <apps/cli/replay/replay.h>

#include <apps/cli/replay/commands.h>

#include <istream>
#include <ostream>

namespace nodeline::replay {

bool RunReplay(std::istream& script, std::ostream& out, ReplayError& error) {
    Session session;
    std::string line;
    for (int number = 1; std::getline(script, line); ++number) {
        const Words words(line);
        if (words.count() == 0) continue;
        try {
            session.printed.clear();
            RunCommand(session, words);
        } catch (const ScriptFault& fault) {
            error = {number, fault.what()};
            return false;
        }
        out << session.printed;
    }
    if (script.eof()) return true;
    error = {0, "the script cannot be read"};
    return false;
}

}  // namespace nodeline::replay
