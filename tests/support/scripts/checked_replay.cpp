#include <support/scripts/checked_replay.h>

#include <apps/cli/replay/dump.h>
#include <nodeline/ops/graph_ops.h>
#include <support/picture_parts.h>
#include <support/picture_rules.h>

#include <algorithm>
#include <cstdint>
#include <initializer_list>
#include <sstream>
#include <string_view>

namespace nodeline::test {

namespace {

bool IsOneOf(std::string_view word, std::initializer_list<std::string_view> words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

// Whether a line of a dump tells of something that is to be seen.
bool IsLineShown(replay::ScriptGraph& script, const replay::Words& words) {
    if (words[0] == "end") return true;
    const std::int64_t number = words.Integer(1);
    if (words[0] == "node") return IsShown(script.GetNode(number).node);
    const Edge& edge = script.GetEdge(number).edge;
    return IsShown(edge.From()) && IsShown(edge.To());
}

// The dump of what is to be seen, without condition words: they tell what an unfold has brought
// back.
std::string PictureOf(replay::ScriptGraph& script) {
    std::istringstream dump(replay::Dump(script));
    std::string picture;
    for (std::string line; std::getline(dump, line);) {
        const replay::Words words(line);
        if (!IsLineShown(script, words)) continue;
        if (words[0] == "node") line.resize(line.rfind(' '));
        picture += line + '\n';
    }
    return picture;
}

std::string FirstDifference(const std::string& a, const std::string& b) {
    std::istringstream as(a);
    std::istringstream bs(b);
    std::string one;
    std::string other;
    while (std::getline(as, one)) {
        if (!std::getline(bs, other)) return one + " against nothing";
        if (one != other) return one + " against " + other;
    }
    return std::getline(bs, other) ? "nothing against " + other : "";
}

std::string Reversed(const replay::Words& words) {
    std::string line = words[0] == "fold" ? "unfold" : "show";
    for (std::size_t i = 1; i < words.count(); ++i) line += " " + std::string(words[i]);
    return line;
}

std::string Joined(const replay::Words& words) {
    std::string line;
    for (std::size_t i = 0; i < words.count(); ++i) {
        line += (i == 0 ? "" : " ") + std::string(words[i]);
    }
    return line;
}

}  // namespace

CheckedReplay::CheckedReplay() { Run(kLayoutLine); }

bool CheckedReplay::Run(const std::string& line) {
    faults_.clear();
    const replay::Words words(line);
    if (words.count() == 0) return true;
    const bool shows_all = IsOneOf(words[0], {"fold", "hide"}) && ShowsWhatFolds(words);
    session_.printed.clear();
    try {
        replay::RunCommand(session_, words);
    } catch (const replay::ScriptFault&) {
        return false;
    }
    if (words[0] == "recalc") {
        if (session_.printed == "recalc true\n") Look();
        return true;
    }
    Note(words);
    if (IsOneOf(words[0], {"fold", "hide"}) && !shows_all) block_.is_plain_toggle = false;
    return true;
}

// Whether all that is about to be hidden is not hidden yet.
bool CheckedReplay::ShowsWhatFolds(const replay::Words& words) {
    try {
        const Node node = session_.script.GetNode(words.Integer(1)).node;
        if (words[0] == "hide") return !IsHidden(node);
        if (words.count() != 3) return false;
        const NodeSet near = words[2] == "parents" ? node.GetParents() : node.GetChildren();
        for (const Node& neighbour : near) {
            if (IsHidden(neighbour)) return false;
        }
        return true;
    } catch (const replay::ScriptFault&) {
        return false;
    }
}

void CheckedReplay::Note(const replay::Words& words) {
    if (IsOneOf(words[0], {"update", "resize", "resize-all"})) {
        if (words[0] == "update" && words[1] == "0") block_.measures_all = true;
        return;
    }
    if (words[0] == "make") {
        const Node node = session_.script.GetNode(words.Integer(1)).node;
        block_.made_ids.insert(node.GetID());
        if (IsRoot(node)) block_.makes_all = block_.measures_all = true;
        block_.has_changes = true;
        return;
    }
    if (IsOneOf(words[0], {"fold", "unfold", "hide", "show"})) return NoteToggle(words);
    const bool only_reads =
        IsOneOf(words[0], {"dump", "mark-drawn", "hit-nodes", "hit-edges", "children-ex",
                           "parents-ex", "edges-in-ex", "edges-out-ex"});
    if (!only_reads) block_.has_changes = true;
}

void CheckedReplay::NoteToggle(const replay::Words& words) {
    block_.is_plain_toggle = block_.toggle.empty();
    block_.toggle = Joined(words);
}

void CheckedReplay::Look() {
    const graph_ptr2<Graph>& graph = session_.script.graph();
    ++recalculations_;
    PictureRules rules;
    rules.is_made = block_.makes_all || recalculations_ == 1;
    faults_ += Faults(graph, rules);
    std::vector<PlacedNode> places = PlacesOf(graph);
    const auto is_fresh = [&](int owner_id) {
        for (const Node& node : session_.script.ListNodes()) {
            if (node.GetID() != owner_id) continue;
            const std::vector<Node> path = PathOf(node);
            return std::any_of(path.begin(), path.end(),
                               [&](const Node& n) { return block_.made_ids.count(n.GetID()) > 0; });
        }
        return true;
    };
    for (const std::string& fault : FindWrongMoves(places_, places, is_fresh)) {
        faults_ += fault + '\n';
    }
    places_ = std::move(places);
    LookAtBits(PictureOf(session_.script));
    block_ = Block();
}

void CheckedReplay::LookAtBits(const std::string& picture) {
    const bool is_still = !block_.has_changes && block_.toggle.empty();
    const bool is_toggle = !block_.has_changes && block_.is_plain_toggle;
    if (is_measured_ && is_still) {
        Expect(picture, picture_, "without a change");
    } else if (is_measured_ && is_toggle && hiding_ && block_.toggle == hiding_->reversal) {
        Expect(picture, hiding_->picture, "hidden and shown again");
        hiding_.reset();
    } else if (is_measured_ && is_toggle && IsOneOf(block_.toggle.substr(0, 4), {"fold", "hide"})) {
        hiding_ = Hiding{picture_, Reversed(replay::Words(block_.toggle))};
    } else {
        hiding_.reset();
    }
    is_measured_ = block_.measures_all || (is_measured_ && !block_.has_changes);
    picture_ = picture;
}

void CheckedReplay::Expect(const std::string& picture, const std::string& wanted,
                           const char* what) {
    ++comparisons_;
    const std::string difference = FirstDifference(wanted, picture);
    if (!difference.empty()) faults_ += std::string(what) + ": " + difference + '\n';
}

std::string FaultsOf(const Script& script) {
    CheckedReplay replay;
    for (std::size_t i = 0; i < script.size(); ++i) {
        replay.Run(script[i]);
        if (replay.faults().empty()) continue;
        return "line " + std::to_string(i + 1) + ", " + script[i] + ":\n" + replay.faults();
    }
    return {};
}

std::string Explain(const Script& script, const std::string& name, const Judge& judge) {
    const Script least = Shrink(script, judge);
    return judge(script) + "after shrinking, " + judge(least) + SaveWithPicture(least, name);
}

}  // namespace nodeline::test
