#include <support/scripts/random_script.h>

#include <algorithm>
#include <sstream>
#include <string>

namespace nodeline::test {

ScriptPlan PlanOf(std::uint64_t seed) {
    Random random(seed);
    ScriptPlan plan;
    plan.nodes = random.Between(2, 20);
    plan.edges = plan.nodes * random.Between(1, 4) / 2;
    plan.depth = random.Between(1, 4);
    return plan;
}

RandomScript::RandomScript(std::uint64_t seed, const ScriptPlan& plan)
    : random_(seed), plan_(plan) {
    for (int i = 0; i < plan.nodes; ++i) AddNode();
    for (int i = 0; i < plan.edges; ++i) AddEdge(AnyNode(), AnyNode());
    Say("recalc");
    for (int i = 0; i < plan.steps; ++i) Step();
}

template <class... Words>
void RandomScript::Say(const char* command, const Words&... words) {
    std::ostringstream line;
    line << command;
    ((line << ' ' << words), ...);
    lines_.push_back(line.str());
}

void RandomScript::Step() {
    for (int i = random_.Between(1, 3); i > 0; --i) Change();
    if (random_.OneIn(6)) Ask(AnyOwner());
    if (plan_.wild && random_.OneIn(2)) DoWildly();
    Say("recalc");
    if (random_.OneIn(3)) return;
    Say("update", 0);
    Say("recalc");
    if (random_.OneIn(2)) {
        AskForWork();
        Say("recalc");
    }
    if (!nodes_.empty() && random_.OneIn(2)) Toggle();
}

void RandomScript::Change() {
    if (nodes_.empty()) return AddNode();
    random_.OneIn(2) ? ChangeParts() : ChangeVisibility();
}

void RandomScript::ChangeParts() {
    switch (random_.Below(10)) {
        case 0:
        case 1:
            return AddNode();
        case 2:
        case 3:
            AddNode();
            AddEdge(AnyNode(), last_node_);
            return Ask(OwnerOf(last_node_));
        case 4:
        case 5:
            AddEdge(AnyNode(), AnyNode());
            return Ask(OwnerOf(edges_.back().from));
        case 6:
            return RemoveNode();
        case 7:
            return RemoveEdge();
        default:
            return MoveNode();
    }
}

void RandomScript::ChangeVisibility() {
    const char* side = random_.OneIn(2) ? "parents" : "children";
    const int node = AnyNode();
    switch (random_.Below(9)) {
        case 0:
        case 1:
            return Say("fold", node, side);
        case 2:
        case 3:
            return Say("unfold", node, side);
        case 4:
            Say("hide", node);
            return Ask(OwnerOf(node));
        case 5:
            Say("show", node);
            return Ask(OwnerOf(node));
        case 6:
        case 7:
            return Resize();
        default:
            return Say("make", random_.OneIn(3) ? 0 : node);
    }
}

// Hides something and shows it again, with nothing in between.
void RandomScript::Toggle() {
    const int node = AnyNode();
    const bool folds = random_.OneIn(2);
    const char* side = random_.OneIn(2) ? "parents" : "children";
    for (const bool shows : {false, true}) {
        folds ? Say(shows ? "unfold" : "fold", node, side) : Say(shows ? "show" : "hide", node);
        AskForWork();
        Say("recalc");
    }
}

void RandomScript::DoWildly() {
    const int node = AnyOwner();
    switch (random_.Below(6)) {
        case 0:
            return Say("edge", last_edge_, node, node);
        case 1:
            return Say("move", node, RandomLength(900), RandomLength(900));
        case 2:
            return Say("shift", node, RandomLength(900), RandomLength(900));
        case 3:
            return Say("unshift", node);
        case 4:
            return Say("update", last_node_ + 1);
        default:
            return Say("dump");
    }
}

// Work where nothing need have changed.
void RandomScript::AskForWork() {
    switch (random_.Below(4)) {
        case 0:
            return Say("resize-all", 0);
        case 1:
            return Say("resize", AnyOwner());
        default:
            return Say("update", AnyOwner());
    }
}

void RandomScript::Ask(int number) { Say("update", random_.OneIn(3) ? 0 : number); }

void RandomScript::AddNode() {
    const int owner = AnyOwner();
    nodes_.push_back({++last_node_, owner});
    const std::string width = RandomLength(900);
    const std::string height = RandomLength(600);
    Say("node", last_node_, owner, width, height);
    if (!lines_.empty() && random_.OneIn(2)) Ask(owner);
}

void RandomScript::AddEdge(int from, int to) {
    edges_.push_back({++last_edge_, from, to});
    Say("edge", last_edge_, from, to, random_.Between(1, 7) * plan_.most_width / 7.0);
}

void RandomScript::RemoveNode() {
    const int top = AnyNode();
    const int owner = OwnerOf(top);
    Say("remove-node", top);
    edges_.erase(std::remove_if(
                     edges_.begin(), edges_.end(),
                     [&](const KnownEdge& e) { return LiesIn(e.from, top) || LiesIn(e.to, top); }),
                 edges_.end());
    std::vector<KnownNode> left;
    for (const KnownNode& node : nodes_) {
        if (!LiesIn(node.number, top)) left.push_back(node);
    }
    nodes_ = left;
    random_.OneIn(3) ? Say("resize", owner) : Ask(owner);
}

void RandomScript::RemoveEdge() {
    if (edges_.empty()) return;
    const auto i = static_cast<std::size_t>(random_.Below(static_cast<int>(edges_.size())));
    const int owner = OwnerOf(edges_[i].from);
    Say("remove-edge", edges_[i].number);
    edges_.erase(edges_.begin() + static_cast<std::ptrdiff_t>(i));
    random_.OneIn(3) ? Say("resize", owner) : Ask(owner);
}

void RandomScript::MoveNode() {
    const int node = AnyNode();
    const int before = OwnerOf(node);
    const int after = AnyOwner();
    if (LiesIn(after, node)) return;
    Say("owner", node, after);
    for (KnownNode& known : nodes_) {
        if (known.number == node) known.owner = after;
    }
    if (random_.OneIn(2)) Ask(before);
    Ask(after);
}

void RandomScript::Resize() {
    const int node = AnyNode();
    const std::string width = RandomLength(900);
    const std::string height = RandomLength(600);
    Say("size", node, width, height);
    switch (random_.Below(4)) {
        case 0:
            return Say("resize-all", node);
        case 1:
            return Say("resize-all", 0);
        case 2:
            return Say("update", node);
        default:
            return Say("resize", node);
    }
}

// In tenths; one in eight is zero.
std::string RandomScript::RandomLength(int most) {
    const int tenths = random_.OneIn(8) ? 0 : random_.Between(0, most);
    return std::to_string(tenths / 10) + '.' + std::to_string(tenths % 10);
}

int RandomScript::AnyNode() { return random_.Of(nodes_).number; }

int RandomScript::AnyOwner() {
    if (nodes_.empty() || random_.OneIn(3)) return 0;
    int owner = AnyNode();
    while (DepthOf(owner) >= plan_.depth) owner = OwnerOf(owner);
    return owner;
}

int RandomScript::OwnerOf(int number) const {
    const auto found = std::find_if(nodes_.begin(), nodes_.end(),
                                    [&](const KnownNode& n) { return n.number == number; });
    return found == nodes_.end() ? 0 : found->owner;
}

int RandomScript::DepthOf(int number) const {
    int depth = 0;
    for (; number != 0; number = OwnerOf(number)) ++depth;
    return depth;
}

bool RandomScript::LiesIn(int number, int owner) const {
    if (owner == 0) return true;
    for (; number != 0; number = OwnerOf(number)) {
        if (number == owner) return true;
    }
    return false;
}

}  // namespace nodeline::test
