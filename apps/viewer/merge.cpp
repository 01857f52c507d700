#include <apps/viewer/merge.h>
#include <nodeline/ops/graph_ops.h>

#include <map>
#include <string>
#include <tuple>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace nodeline::app {

namespace {

// Ends, by their ids in the shown graph, and the caption.
using EdgeKey = std::tuple<int, int, std::string>;

class Merger {
public:
    Merger(const graph_ptr2<Graph>& shown, const graph_ptr2<Graph>& fresh)
        : shown_(shown), fresh_(fresh) {}

    MergeResult Run() {
        pair_nodes();
        remove_nodes();
        merge_edges();
        ask_for_layout();
        return result_;
    }

private:
    // A fresh owner and its counterpart in the shown graph.
    struct Owners {
        Node fresh;
        Node shown;
    };

    void pair_nodes();
    void pair_contents(const Owners& owners, std::vector<Owners>* open);
    // Of one owner: `shown` are its contents in the shown graph.
    void pair_renamed(const std::vector<Node>& unknown, const Node& owner,
                      const std::vector<Node>& shown, std::vector<Owners>* open);
    void pair_one(const Node& fresh, const Node& shown, std::vector<Owners>* open);
    [[nodiscard]] bool is_staying(const Node& node) const {
        return staying_.count(node.GetID()) != 0;
    }
    [[nodiscard]] Node add(const Node& fresh, Node owner);
    void remove_nodes();
    void merge_edges();
    // What is in the node's owner is not what it was.
    void note_change(const Node& node) { changed_.insert(node.GetOwner().GetID()); }
    void ask_for_layout();

    graph_ptr2<Graph> shown_;
    graph_ptr2<Graph> fresh_;
    std::unordered_map<int, Node> counterpart_;  // of fresh nodes, by their ids
    std::unordered_set<int> staying_;            // shown nodes that have a counterpart
    std::unordered_set<int> changed_;            // owners whose contents or edges are others
    MergeResult result_;
};

std::vector<Node> ContentsOf(const Node& owner) {
    std::vector<Node> nodes;
    for (const Node& node : owner.GetOwned()) {
        if (node != owner) nodes.push_back(node);
    }
    return nodes;
}

std::pair<std::string, int> KeyOf(const Node& node) { return {node.GetCaption(), node.GetTag()}; }

void Merger::pair_nodes() {
    std::vector<Owners> open{{fresh_->GetRoot(), shown_->GetRoot()}};
    while (!open.empty()) {
        const Owners owners = open.back();
        open.pop_back();
        pair_contents(owners, &open);
    }
}

// In three rounds: what has kept its caption and its tag, what has kept its caption, and what has
// kept its tag. The first makes sure that a second merge pairs as the one before did.
void Merger::pair_contents(const Owners& owners, std::vector<Owners>* open) {
    const std::vector<Node> shown = ContentsOf(owners.shown);
    std::map<std::pair<std::string, int>, Node> by_both;
    for (const Node& node : shown) by_both.emplace(KeyOf(node), node);
    std::vector<Node> moved;
    for (const Node& node : ContentsOf(owners.fresh)) {
        const auto found = by_both.find(KeyOf(node));
        if (found == by_both.end()) {
            moved.push_back(node);
            continue;
        }
        pair_one(node, found->second, open);
        by_both.erase(found);
    }
    std::unordered_map<std::string, std::vector<Node>> by_caption;
    for (auto it = shown.rbegin(); it != shown.rend(); ++it) {
        if (is_staying(*it)) continue;
        by_caption[it->GetCaption()].push_back(*it);
    }
    std::vector<Node> unknown;
    for (const Node& node : moved) {
        const auto found = by_caption.find(node.GetCaption());
        if (found == by_caption.end() || found->second.empty()) {
            unknown.push_back(node);
            continue;
        }
        pair_one(node, found->second.back(), open);
        found->second.pop_back();
    }
    pair_renamed(unknown, owners.shown, shown, open);
}

void Merger::pair_renamed(const std::vector<Node>& unknown, const Node& owner,
                          const std::vector<Node>& shown, std::vector<Owners>* open) {
    std::unordered_map<int, Node> by_tag;
    for (const Node& node : shown) {
        if (!is_staying(node)) by_tag.emplace(node.GetTag(), node);
    }
    for (const Node& node : unknown) {
        const auto found = by_tag.find(node.GetTag());
        if (found == by_tag.end()) {
            pair_one(node, add(node, owner), open);
            continue;
        }
        found->second.SetCaption(node.GetCaption());
        note_change(found->second);
        result_.has_other_changes = true;
        pair_one(node, found->second, open);
        by_tag.erase(found);
    }
}

void Merger::pair_one(const Node& fresh, const Node& shown, std::vector<Owners>* open) {
    counterpart_.emplace(fresh.GetID(), shown);
    staying_.insert(shown.GetID());
    Node(shown).SetTag(fresh.GetTag());
    open->push_back({fresh, shown});
}

Node Merger::add(const Node& fresh, Node owner) {
    Node node = owner.AddNode();
    node.SetCaption(fresh.GetCaption());
    node.SetCondition(fresh.GetCondition());
    ++result_.added;
    note_change(node);
    return node;
}

// Edges go first: a node that is removed does not take them along.
void Merger::remove_nodes() {
    std::vector<Node> leaving;
    const auto collect = [&](const Node& node) {
        if (!is_staying(node)) leaving.push_back(node);
    };
    ForEachNodeIn(shown_->GetRoot(), collect, true, false);
    for (const Node& node : leaving) {
        std::vector<Edge> edges;
        for (const Edge& edge : node.GetEdgesOut()) edges.push_back(edge);
        for (const Edge& edge : node.GetEdgesIn()) edges.push_back(edge);
        for (Edge& edge : edges) {
            if (edge.From()) edge.Remove();
        }
    }
    for (const Node& node : leaving) note_change(node);
    for (Node& node : leaving) node.Remove();
    result_.removed = static_cast<int>(leaving.size());
}

void Merger::merge_edges() {
    std::map<EdgeKey, std::vector<Edge>> unmatched;
    const auto collect = [&](const Node& node) {
        for (const Edge& edge : node.GetEdgesOut()) {
            unmatched[{node.GetID(), edge.To().GetID(), edge.GetCaption()}].push_back(edge);
        }
    };
    ForEachNodeIn(shown_->GetRoot(), collect, false, false);
    const auto match = [&](const Node& node) {
        const auto from = counterpart_.find(node.GetID());
        for (const Edge& edge : node.GetEdgesOut()) {
            const auto to = counterpart_.find(edge.To().GetID());
            if (from == counterpart_.end() || to == counterpart_.end()) continue;
            std::vector<Edge>& old =
                unmatched[{from->second.GetID(), to->second.GetID(), edge.GetCaption()}];
            if (!old.empty()) {
                old.pop_back();
                continue;
            }
            Edge made = from->second.LinkTo(to->second);
            if (made) made.SetCaption(edge.GetCaption());
            note_change(from->second);
            note_change(to->second);
            result_.has_other_changes = true;
        }
    };
    ForEachNodeIn(fresh_->GetRoot(), match, false, false);
    for (auto& [key, edges] : unmatched) {
        for (Edge& edge : edges) {
            note_change(edge.From());
            note_change(edge.To());
            edge.Remove();
            result_.has_other_changes = true;
        }
    }
}

// Owners first. An edge shows in every owner that it crosses the border of, which the root takes
// care of.
void Merger::ask_for_layout() {
    if (result_.IsEmpty()) return;
    shown_->GetRoot().UpdateLayout();
    const auto ask = [this](Node node) {
        if (changed_.count(node.GetID()) != 0) node.UpdateLayout();
    };
    ForEachNodeIn(shown_->GetRoot(), ask, false, false);
}

}  // namespace

MergeResult Merge(const graph_ptr2<Graph>& shown, const graph_ptr2<Graph>& fresh) {
    return Merger(shown, fresh).Run();
}

}  // namespace nodeline::app
