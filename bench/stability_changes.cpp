#include <bench/stability_changes.h>

#include <algorithm>
#include <utility>

namespace nodeline::bench {

namespace {

bool is_leaf(const Node& node) { return node.GetOwned().GetCount() == 0; }

std::vector<int> visible_leaves(const Subject& subject) {
    std::vector<int> leaves;
    for (int number = 0; number < subject.node_count(); ++number) {
        if (is_leaf(subject.NodeAt(number)) && subject.IsVisible(number)) leaves.push_back(number);
    }
    return leaves;
}

// A node with an edge to itself is a child of its own, and would fold itself.
bool can_fold(const Subject& subject, int number) {
    bool any = false;
    for (const Node& child : subject.NodeAt(number).GetChildren()) {
        if (Subject::NumberOf(child) == number) return false;
        any = any || subject.IsVisible(Subject::NumberOf(child));
    }
    return any;
}

}  // namespace

std::array<ChangeKind, 5> Changer::NextRound() {
    std::array<ChangeKind, 5> round = {ChangeKind::kFold, ChangeKind::kUnfold, ChangeKind::kAddLeaf,
                                       ChangeKind::kAddEdge, ChangeKind::kGrow};
    for (std::size_t i = round.size() - 1; i > 0; --i) std::swap(round[i], round[below(i + 1)]);
    const auto fold = std::find(round.begin(), round.end(), ChangeKind::kFold);
    const auto unfold = std::find(round.begin(), round.end(), ChangeKind::kUnfold);
    if (unfold < fold) std::iter_swap(fold, unfold);
    return round;
}

std::optional<Change> Changer::Choose(ChangeKind kind, const Subject& subject) {
    const std::vector<int> leaves = visible_leaves(subject);
    if (leaves.empty()) return std::nullopt;
    switch (kind) {
        case ChangeKind::kFold:
            return choose_fold(subject, leaves);
        case ChangeKind::kUnfold:
            return choose_unfold(subject);
        case ChangeKind::kAddEdge:
            return choose_edge(subject, leaves);
        case ChangeKind::kAddLeaf: {
            Change change{kind, pick(leaves)};
            change.to_leaf = below(100) < 70;
            change.caption_length = 4 + static_cast<int>(below(13));
            return change;
        }
        case ChangeKind::kGrow: {
            Change change{kind, pick(leaves)};
            change.growth.cx = 10.0 + static_cast<double>(below(31));
            change.growth.cy = 10.0 + static_cast<double>(below(31));
            return change;
        }
    }
    return std::nullopt;
}

std::optional<Change> Changer::choose_fold(const Subject& subject, const std::vector<int>& leaves) {
    std::vector<int> candidates;
    for (const int leaf : leaves) {
        if (can_fold(subject, leaf)) candidates.push_back(leaf);
    }
    if (candidates.empty()) return std::nullopt;
    folded_.push_back(pick(candidates));
    return Change{ChangeKind::kFold, folded_.back()};
}

std::optional<Change> Changer::choose_unfold(const Subject& subject) {
    std::vector<int> candidates;
    for (const int number : folded_) {
        if (subject.IsVisible(number)) candidates.push_back(number);
    }
    if (candidates.empty()) return std::nullopt;
    const int chosen = pick(candidates);
    folded_.erase(std::remove(folded_.begin(), folded_.end(), chosen), folded_.end());
    return Change{ChangeKind::kUnfold, chosen};
}

// Most edges stay in their owner, and most lead on to a node that was made later.
std::optional<Change> Changer::choose_edge(const Subject& subject, const std::vector<int>& leaves) {
    if (leaves.size() < 2) return std::nullopt;
    Change change{ChangeKind::kAddEdge, pick(leaves)};
    const Node owner = subject.NodeAt(change.node).GetOwner();
    std::vector<int> near;
    for (const int leaf : leaves) {
        if (leaf != change.node && subject.NodeAt(leaf).GetOwner() == owner) near.push_back(leaf);
    }
    const bool stays = !near.empty() && below(100) < 80;
    do {
        change.other = pick(stays ? near : leaves);
    } while (change.other == change.node);
    const bool leads_on = below(100) < 80;
    if (leads_on != (change.node < change.other)) std::swap(change.node, change.other);
    return change;
}

}  // namespace nodeline::bench
