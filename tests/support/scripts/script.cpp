#include <apps/cli/replay/commands.h>
#include <support/scripts/script.h>

#include <algorithm>
#include <cstddef>
#include <istream>

namespace nodeline::test {

Script ReadScript(std::istream& in) {
    Script script;
    for (std::string line; std::getline(in, line);) script.push_back(line);
    return script;
}

std::string TextOf(const Script& script) {
    std::string text;
    for (const std::string& line : script) text += line + '\n';
    return text;
}

Script WithoutFaultyLines(const Script& script) {
    replay::Session session;
    Script good;
    for (const std::string& line : script) {
        const replay::Words words(line);
        if (words.count() == 0) continue;
        try {
            replay::RunCommand(session, words);
            good.push_back(line);
        } catch (const replay::ScriptFault&) {
        }
    }
    return good;
}

// Leaves out runs of lines, shorter and shorter ones, until no line can go.
Script Shrink(const Script& script, const Judge& judge) {
    Script kept = WithoutFaultyLines(script);
    std::size_t length = std::max<std::size_t>(kept.size() / 2, 1);
    while (!kept.empty()) {
        bool has_shrunk = false;
        for (std::size_t first = 0; first < kept.size();) {
            const std::size_t last = std::min(first + length, kept.size());
            Script rest(kept.begin(), kept.begin() + static_cast<std::ptrdiff_t>(first));
            rest.insert(rest.end(), kept.begin() + static_cast<std::ptrdiff_t>(last), kept.end());
            rest = WithoutFaultyLines(rest);
            if (judge(rest).empty()) {
                first = last;
                continue;
            }
            kept = rest;
            has_shrunk = true;
        }
        if (has_shrunk) continue;
        if (length == 1) break;
        length /= 2;
    }
    return kept;
}

}  // namespace nodeline::test
