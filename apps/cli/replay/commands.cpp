#include <apps/cli/replay/commands.h>

#include <apps/cli/replay/dump.h>
#include <nodeline/layout/inc_layout.h>
#include <nodeline/layout/stable_layout.h>
#include <nodeline/ops/graph_ops.h>

namespace nodeline::replay {

namespace {

Node node_at(Session& session, const Words& words, std::size_t index = 1) {
    return session.script.GetNode(words.Integer(index)).node;
}

void run_node(Session& session, const Words& words) {
    session.script.AddNode(words.Integer(1), words.Integer(2), {words.Number(3), words.Number(4)});
}

void run_edge(Session& session, const Words& words) {
    const double width = words.count() > 4 ? words.Number(4) : 1.0;
    session.script.AddEdge(words.Integer(1), words.Integer(2), words.Integer(3), width);
}

void run_size(Session& session, const Words& words) {
    session.script.GetNode(words.Integer(1)).size = {words.Number(2), words.Number(3)};
}

void run_owner(Session& session, const Words& words) {
    node_at(session, words).SetOwner(node_at(session, words, 2));
}

void run_layout(Session& session, const Words& words) {
    graph_ptr2<ILayout> layout;
    if (words[1] == "inc") {
        layout = checked_upcast<ILayout>(IncLayout::Create());
    } else if (words[1] == "stable") {
        layout = checked_upcast<ILayout>(StableLayout::Create());
    } else {
        throw ScriptFault("there is no layout " + Quoted(words[1]));
    }
    if (session.is_laid_out) throw ScriptFault("the layout is chosen before the first recalc");
    session.script.graph()->SetDefaultLayout(layout);
}

void run_remove_edge(Session& session, const Words& words) {
    session.script.RemoveEdge(words.Integer(1));
}

void run_remove_node(Session& session, const Words& words) {
    session.script.RemoveNode(words.Integer(1));
}

FoldDirection direction(const Words& words) {
    return words.IsFirstOf(2, "parents", "children") ? FoldParents : FoldChildren;
}

void run_fold(Session& session, const Words& words) {
    Fold(node_at(session, words), direction(words));
}

void run_unfold(Session& session, const Words& words) {
    Unfold(node_at(session, words), direction(words));
}

void run_move(Session& session, const Words& words) {
    MoveNode(node_at(session, words), words.Number(2), words.Number(3));
}

void run_recalc(Session& session, const Words&) {
    session.is_laid_out = true;
    const bool had_work = session.script.graph()->RecalculateLayout(nullptr);
    session.printed = had_work ? "recalc true\n" : "recalc false\n";
}

void run_shift(Session& session, const Words& words) {
    ShiftPosition(node_at(session, words), words.Number(2), words.Number(3));
}

void run_hit_nodes(Session& session, const Words& words) {
    const NodeSet hits = session.script.graph()->HitNodeTest(words.Number(1), words.Number(2),
                                                             words.Number(3), words.Number(4));
    session.printed = words[0];
    for (const Node& node : hits) {
        session.printed += " " + std::to_string(session.script.NumberOf(node));
    }
    session.printed += '\n';
}

void run_hit_edges(Session& session, const Words& words) {
    const EdgeSet hits = session.script.graph()->HitEdgeTest(words.Number(1), words.Number(2),
                                                             words.Number(3), words.Number(4));
    session.printed = words[0];
    for (const Edge& edge : hits) {
        session.printed += " " + std::to_string(session.script.NumberOf(edge));
    }
    session.printed += '\n';
}

template <graph_ptr2<IGraphSet<NodeEdgePair>> (*kNeighbours)(Node)>
void run_neighbours(Session& session, const Words& words) {
    const auto pairs = kNeighbours(node_at(session, words));
    session.printed = words[0];
    for (const NodeEdgePair& pair : *pairs) {
        session.printed += " " + std::to_string(session.script.NumberOf(pair.node)) + ":" +
                           std::to_string(session.script.NumberOf(pair.edge));
    }
    session.printed += '\n';
}

template <void (*kOperation)(Node)>
void run_on_node(Session& session, const Words& words) {
    kOperation(node_at(session, words));
}

template <void (Node::*kRequest)()>
void run_request(Session& session, const Words& words) {
    (node_at(session, words).*kRequest)();
}

const CommandTable& graph_commands() {
    static const CommandTable table = {
        {"node", {4, 4, run_node}},
        {"edge", {3, 4, run_edge}},
        {"size", {3, 3, run_size}},
        {"owner", {2, 2, run_owner}},
        {"layout", {1, 1, run_layout}},
        {"remove-edge", {1, 1, run_remove_edge}},
        {"remove-node", {1, 1, run_remove_node}},
        {"hide", {1, 1, run_on_node<Hide>}},
        {"show", {1, 1, run_on_node<Show>}},
        {"fold", {2, 2, run_fold}},
        {"unfold", {2, 2, run_unfold}},
        {"move", {3, 3, run_move}},
        {"make", {1, 1, run_request<&Node::MakeLayout>}},
        {"update", {1, 1, run_request<&Node::UpdateLayout>}},
        {"resize", {1, 1, run_request<&Node::ResizeSelf>}},
        {"resize-all", {1, 1, run_request<&Node::ResizeAll>}},
        {"recalc", {0, 0, run_recalc}},
        {"shift", {3, 3, run_shift}},
        {"unshift", {1, 1, run_on_node<UnshiftPosition>}},
        {"mark-drawn",
         {0, 0, [](Session& session, const Words&) { MarkDrawnIn(session.script.graph()); }}},
        {"dump",
         {0, 0, [](Session& session, const Words&) { session.printed = Dump(session.script); }}},
        {"hit-nodes", {4, 4, run_hit_nodes}},
        {"hit-edges", {4, 4, run_hit_edges}},
        {"children-ex", {1, 1, run_neighbours<GetChildrenEx>}},
        {"parents-ex", {1, 1, run_neighbours<GetParentsEx>}},
        {"edges-out-ex", {1, 1, run_neighbours<GetEdgesOutEx>}},
        {"edges-in-ex", {1, 1, run_neighbours<GetEdgesInEx>}}};
    return table;
}

const Command& find_command(std::string_view name) {
    for (const CommandTable* table : {&graph_commands(), &GetViewCommands()}) {
        const auto found = table->find(name);
        if (found != table->end()) return found->second;
    }
    throw ScriptFault("there is no command " + Quoted(name));
}

std::string word_count(const Command& command) {
    if (command.most == kAnyCount) return "at least " + std::to_string(command.least) + " word";
    std::string text = command.most == 0 ? "no" : std::to_string(command.most);
    if (command.least < command.most) {
        const bool are_two = command.least + 1 == command.most;
        text = std::to_string(command.least) + (are_two ? " or " : " to ") + text;
    }
    return text + (command.most == 1 ? " word" : " words");
}

}  // namespace

void RunCommand(Session& session, const Words& words) {
    const Command& command = find_command(words[0]);
    const std::size_t given = words.count() - 1;
    if (given < command.least || given > command.most) {
        throw ScriptFault(Quoted(words[0]) + " takes " + word_count(command) + ", not " +
                          std::to_string(given));
    }
    command.run(session, words);
}

}  // namespace nodeline::replay
