#include <nodeline/ops/internal/load_owners.h>

#include <algorithm>
#include <utility>

namespace nodeline::internal {

namespace {

using Place = std::int32_t;
constexpr Place kNone = DeclaredNodes::kNone;

std::size_t index(Place place) { return static_cast<std::size_t>(place); }

// Who moves under whom, and in which order.
class OwnerPlan {
public:
    explicit OwnerPlan(const DeclaredNodes& nodes)
        : nodes_(nodes),
          owner_(index(nodes.size()), kNone),
          depth_(index(nodes.size()), kUnknown) {}

    // Looks the owners up, and settles those that go round in circles.
    OwnerOutcome Settle();

    [[nodiscard]] Place OwnerOf(Place node) const { return owner_[index(node)]; }

    // The nodes that move: the innermost first, so that a new owner still stands under the root
    // when it is checked for standing under the node; nodes of one depth by rising id, which is the
    // order in which one owner has to get them.
    [[nodiscard]] std::vector<Place> OrderOfMoves() const;

private:
    static constexpr std::int32_t kUnknown = 0;
    static constexpr std::int32_t kOnPath = -1;

    void find_depth(Place node, OwnerOutcome& outcome);
    void cut_circle(Place node, OwnerOutcome& outcome);

    const DeclaredNodes& nodes_;
    std::vector<Place> by_id_;
    std::vector<Place> owner_;
    // The number of owners and one: 1 directly under the root.
    std::vector<std::int32_t> depth_;
    std::vector<Place> path_;
};

OwnerOutcome OwnerPlan::Settle() {
    OwnerOutcome outcome;
    by_id_.reserve(index(nodes_.size()));
    for (Place i = 0; i < nodes_.size(); ++i) by_id_.push_back(i);
    std::sort(by_id_.begin(), by_id_.end(),
              [this](Place a, Place b) { return nodes_[a].id < nodes_[b].id; });
    for (const Place node : by_id_) {
        if (nodes_[node].owner == 0) continue;
        owner_[index(node)] = nodes_.Find(nodes_[node].owner);
        if (OwnerOf(node) == kNone) {
            outcome.without_owner = node;
            return outcome;
        }
        if (OwnerOf(node) == node) outcome.detached.push_back(node);
    }
    for (const Place node : by_id_) find_depth(node, outcome);
    return outcome;
}

void OwnerPlan::find_depth(Place node, OwnerOutcome& outcome) {
    path_.clear();
    Place p = node;
    while (p != kNone && depth_[index(p)] == kUnknown) {
        depth_[index(p)] = kOnPath;
        path_.push_back(p);
        if (OwnerOf(p) == p) break;
        p = OwnerOf(p);
        if (p != kNone && depth_[index(p)] == kOnPath) {
            cut_circle(p, outcome);
            for (const Place on_path : path_) depth_[index(on_path)] = kUnknown;
            path_.clear();
            p = node;
        }
    }
    // A node that owns itself ends the path as the root does.
    std::int32_t depth = p == kNone || depth_[index(p)] == kOnPath ? 0 : depth_[index(p)];
    for (; !path_.empty(); path_.pop_back()) depth_[index(path_.back())] = ++depth;
}

// In the order of ids, the last node of a circle is the one whose owner is already under it.
void OwnerPlan::cut_circle(Place node, OwnerOutcome& outcome) {
    Place last = node;
    for (Place p = OwnerOf(node); p != node; p = OwnerOf(p)) {
        if (nodes_[p].id > nodes_[last].id) last = p;
    }
    owner_[index(last)] = kNone;
    outcome.refused.push_back(last);
}

std::vector<Place> OwnerPlan::OrderOfMoves() const {
    std::vector<Place> order;
    for (const Place node : by_id_) {
        if (OwnerOf(node) != kNone) order.push_back(node);
    }
    std::stable_sort(order.begin(), order.end(),
                     [this](Place a, Place b) { return depth_[index(a)] > depth_[index(b)]; });
    return order;
}

// Keeps the nodes of the root while they move. Each move searches the root's set and closes the gap
// that the node leaves there, so the set holds only the node that moves; those that stay come back
// at the end.
class RootContents {
public:
    explicit RootContents(const Node& root) : owned_(root.record()->get_owned()) {
        all_.reserve(index(owned_->GetCount()));
        for (int i = 0; i < owned_->GetCount(); ++i) all_.push_back((*owned_)[i]);
        owned_->Clear();
    }
    // The set has had room for them all, so this cannot fail.
    ~RootContents() {
        owned_->Clear();
        for (const auto& record : all_) {
            if (record->get_owner() == 0) owned_->Add(record);
        }
    }
    RootContents(const RootContents&) = delete;
    RootContents& operator=(const RootContents&) = delete;

    void Move(const graph_ptr<INodeImpl>& record, const graph_ptr<INodeImpl>& owner) {
        owned_->Add(record);
        record->set_owner(owner);
    }

private:
    graph_ptr<NodeImplSet> owned_;
    std::vector<graph_ptr<INodeImpl>> all_;
};

}  // namespace

bool DeclaredNodes::Add(DeclaredNode node) {
    if (Find(node.id) != kNone) return false;
    const Place place = size();
    if (node.id >= 0 && index(node.id) < 4 * nodes_.size() + 1024) {
        if (index(node.id) >= dense_.size()) dense_.resize(2 * index(node.id) + 64, kNone);
        dense_[index(node.id)] = place;
    } else {
        sparse_[node.id] = place;
    }
    nodes_.push_back(std::move(node));
    return true;
}

std::int32_t DeclaredNodes::Find(int id) const {
    if (id >= 0 && index(id) < dense_.size() && dense_[index(id)] != kNone) {
        return dense_[index(id)];
    }
    if (sparse_.empty()) return kNone;
    const auto found = sparse_.find(id);
    return found == sparse_.end() ? kNone : found->second;
}

OwnerOutcome AssignOwners(const Node& root, const DeclaredNodes& nodes) {
    OwnerPlan plan(nodes);
    OwnerOutcome outcome = plan.Settle();
    if (outcome.without_owner != kNone) return outcome;
    const std::vector<Place> moves = plan.OrderOfMoves();
    if (moves.empty()) return outcome;
    RootContents contents(root);
    for (const Place node : moves) {
        contents.Move(nodes[node].record, nodes[plan.OwnerOf(node)].record);
    }
    return outcome;
}

}  // namespace nodeline::internal
