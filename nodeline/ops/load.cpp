#include <nodeline/ops/load.h>

#include <nodeline/ops/graph_ops.h>
#include <nodeline/ops/internal/load_fields.h>
#include <nodeline/ops/internal/load_owners.h>

#include <cassert>
#include <limits>
#include <string>
#include <string_view>
#include <unordered_set>
#include <utility>
#include <vector>

namespace nodeline {

namespace {

using internal::DeclaredNodes;
using internal::EdgeLine;
using internal::NodeLine;

enum class Section { kTypes, kNodes, kEdges };

// One load. Everything that it knows of the file ends with it.
class Loader {
public:
    Loader(Node root, std::istream& in, const LoadVisitor& visit)
        : root_(std::move(root)), in_(in), visit_(visit) {}

    bool Run();

    [[nodiscard]] const LoadError& error() const { return error_; }

private:
    bool read_sections();
    bool enter_section(std::string_view line);
    void read_node();
    bool read_edge();
    bool assign_owners();
    void narrow_view();
    void show_way_down(const Node& thread);
    void take_out(const Node& top);

    bool next_line();
    bool refuse(int line, std::string reason);
    void note(int line, std::string reason);

    Node root_;
    std::istream& in_;
    const LoadVisitor& visit_;
    std::string line_;
    int line_number_ = 0;
    Section section_ = Section::kTypes;
    DeclaredNodes nodes_;
    std::vector<Node> threads_;
    // Nodes captioned "main" whose children are shown already, with all that follows from them.
    std::unordered_set<int> gone_on_with_;
    // The tops of what hangs under no root.
    std::vector<Node> detached_;
    LoadError error_;
};

std::string node_name(int id) { return "node " + std::to_string(id); }

bool Loader::Run() {
    if (!read_sections() || !assign_owners()) {
        root_.Remove();
        return false;
    }
    if (!threads_.empty()) narrow_view();
    for (const Node& top : detached_) take_out(top);
    ForEachNodeIn(root_, MarkOld, true, true);
    return true;
}

bool Loader::read_sections() {
    next_line();
    root_.Remove();
    while (next_line()) {
        if (enter_section(line_)) continue;
        if (section_ == Section::kNodes) read_node();
        if (section_ == Section::kEdges && !read_edge()) return false;
    }
    if (!in_.eof()) return refuse(0, "the input cannot be read");
    return true;
}

bool Loader::next_line() {
    if (!std::getline(in_, line_)) return false;
    if (line_number_ < std::numeric_limits<int>::max()) ++line_number_;
    return true;
}

// A keyword is a whole line.
bool Loader::enter_section(std::string_view line) {
    if (line == "[nodes]" || line == "[clusters]") {
        section_ = Section::kNodes;
    } else if (line == "[edges]") {
        section_ = Section::kEdges;
    } else if (line == "[types]") {
        section_ = Section::kTypes;
    } else {
        return false;
    }
    return true;
}

void Loader::read_node() {
    const NodeLine line(line_);
    if (line.id == -1) return;
    Node node = root_.AddNode();
    node.SetCaption(std::string(line.caption));
    if (visit_) visit_(node, line.id);
    if (line.is_out_of_range) note(line_number_, "a number is too large or too small for an id");
    if (!nodes_.Add({line.id, line.owner, line_number_, node.record()})) {
        note(line_number_,
             node_name(line.id) + " is declared above, and edges will not find this one");
    }
    if (line.caption.find("Thread") != std::string_view::npos) threads_.push_back(node);
}

bool Loader::read_edge() {
    const EdgeLine line(line_);
    if (line.from == -1) return true;
    const std::int32_t from = nodes_.Find(line.from);
    const std::int32_t to = nodes_.Find(line.to);
    if (from == DeclaredNodes::kNone || to == DeclaredNodes::kNone) {
        if (line.is_out_of_range) {
            return refuse(line_number_, "a number is too large or too small for an id");
        }
        const int missing = from == DeclaredNodes::kNone ? line.from : line.to;
        return refuse(line_number_, missing == -1 ? "edge names no second node"
                                                  : "edge names " + node_name(missing) +
                                                        ", which is not declared above");
    }
    const Node target(root_.store(), nodes_[to].record);
    Node(root_.store(), nodes_[from].record).LinkTo(target).SetCaption(std::string(line.caption));
    return true;
}

bool Loader::assign_owners() {
    const internal::OwnerOutcome outcome = internal::AssignOwners(root_, nodes_);
    if (outcome.without_owner != DeclaredNodes::kNone) {
        const auto& node = nodes_[outcome.without_owner];
        return refuse(
            node.line,
            node_name(node.id) + (node.owner == -1 ? " names no owner"
                                                   : " names " + node_name(node.owner) +
                                                         " as its owner, which is not declared"));
    }
    for (const std::int32_t place : outcome.refused) {
        note(nodes_[place].line,
             node_name(nodes_[place].id) + " owns its owner, so it stands outside of all owners");
    }
    for (const std::int32_t place : outcome.detached) {
        note(nodes_[place].line,
             node_name(nodes_[place].id) + " owns itself, so it is left out with all that it owns");
        detached_.emplace_back(root_.store(), nodes_[place].record);
    }
    return true;
}

void Loader::narrow_view() {
    ForEachNodeIn(root_, Hide, true, false);
    for (const Node& thread : threads_) {
        Show(thread);
        show_way_down(thread);
    }
}

// Two ways down that meet go on alike, so each node is gone on with once in a load, not once in the
// way of each thread; circles end there, too.
void Loader::show_way_down(const Node& thread) {
    for (NodeSet set = thread.GetChildren();;) {
        Node next;
        for (const Node& node : set) {
            Show(node);
            if (!next && node.GetCaption().find("main") != std::string::npos) next = node;
        }
        if (!next || !gone_on_with_.insert(next.GetID()).second) return;
        set = next.GetChildren();
    }
}

// Edges first, since what they join is not all in the part that goes.
void Loader::take_out(const Node& top) {
    const auto remove_edges = [](const Node& node) {
        while (node.GetEdgesOut().GetCount() > 0) node.GetEdgesOut().GetItem(0).Remove();
        while (node.GetEdgesIn().GetCount() > 0) node.GetEdgesIn().GetItem(0).Remove();
    };
    ForEachNodeIn(top, remove_edges, true, true);
    Node(top).Remove();
}

bool Loader::refuse(int line, std::string reason) {
    error_ = {line, std::move(reason)};
    return false;
}

// The first note stands.
void Loader::note(int line, std::string reason) {
    if (error_.reason.empty()) error_ = {line, std::move(reason)};
}

}  // namespace

bool Load(graph_ptr2<Graph> graph, std::istream& in) { return Load(graph, in, nullptr); }

bool Load(graph_ptr2<Graph> graph, std::istream& in, LoadError* error) {
    return Load(graph, in, error, LoadVisitor());
}

bool Load(graph_ptr2<Graph> graph, std::istream& in, LoadError* error, const LoadVisitor& visit) {
    assert(graph && "a graph to load into");
    if (!graph) {
        if (error != nullptr) *error = {0, "there is no graph to load into"};
        return false;
    }
    Loader loader(graph->GetRoot(), in, visit);
    const bool is_done = loader.Run();
    if (error != nullptr) *error = loader.error();
    return is_done;
}

}  // namespace nodeline
