// Pictures of scripts that fail, to look at.
#include <support/picture_parts.h>
#include <support/scripts/checked_replay.h>

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace nodeline::test {

namespace {

constexpr double kMargin = 20.0;

void WriteNodes(const replay::ScriptGraph& script, const PictureParts& parts, std::ostream& out) {
    for (const Node& node : parts.nodes) {
        const Box box = BoxOf(node);
        out << "<rect x='" << box.left << "' y='" << box.top << "' width='" << box.right - box.left
            << "' height='" << box.bottom - box.top << "' fill='#4060a018' stroke='#4060a0'/>\n"
            << "<text x='" << box.left + 2 << "' y='" << box.top + 9 << "'>"
            << script.NumberOf(node) << "</text>\n";
    }
}

void WriteEdges(const replay::ScriptGraph& script, const PictureParts& parts, std::ostream& out) {
    for (const Edge& edge : parts.edges) {
        out << "<polyline fill='none' stroke='#c03020' points='";
        for (const Node& bend : edge.GetBreakNodes()) {
            out << bend.GetPosition().x << ',' << bend.GetPosition().y << ' ';
        }
        out << "'><title>edge " << script.NumberOf(edge) << "</title></polyline>\n";
    }
}

std::string PictureText(const Script& lines) {
    CheckedReplay replay;
    for (const std::string& line : lines) replay.Run(line);
    const replay::ScriptGraph& script = replay.session().script;
    const Box box = BoxOf(script.graph()->GetRoot());
    std::ostringstream out;
    out << "<svg xmlns='http://www.w3.org/2000/svg' font-size='9' viewBox='" << box.left - kMargin
        << ' ' << box.top - kMargin << ' ' << box.right - box.left + 2 * kMargin << ' '
        << box.bottom - box.top + 2 * kMargin << "'>\n<rect x='" << box.left << "' y='" << box.top
        << "' width='" << box.right - box.left << "' height='" << box.bottom - box.top
        << "' fill='white' stroke='gray'/>\n";
    const PictureParts parts(script.graph());
    WriteNodes(script, parts, out);
    WriteEdges(script, parts, out);
    out << "</svg>\n";
    return out.str();
}

}  // namespace

std::string SaveWithPicture(const Script& script, const std::string& name) {
    const std::string stem = testing::TempDir() + name;
    std::ofstream(stem + ".txt") << kLayoutLine << '\n' << TextOf(script);
    std::ofstream(stem + ".svg") << PictureText(script);
    return "replay script: " + stem + ".txt\npicture: " + stem + ".svg\n";
}

}  // namespace nodeline::test
