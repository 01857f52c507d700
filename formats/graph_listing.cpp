#include <formats/file_ids.h>
#include <formats/graph_listing.h>
#include <nodeline/ops/graph_ops.h>
#include <paintcore/utf8.h>

#include <algorithm>
#include <cstddef>
#include <optional>

namespace nodeline::formats {

namespace {

template <class Item>
void sort_by_id(std::vector<Item>& items) {
    std::sort(items.begin(), items.end(),
              [](const Item& a, const Item& b) { return a.GetID() < b.GetID(); });
}

}  // namespace

GraphListing::GraphListing(const graph_ptr2<Graph>& graph, const GraphLooks& looks)
    : root_(graph->GetRoot()), looks_(looks) {
    const auto take = [this](const Node& node) {
        nodes_.push_back(node);
        for (const Edge& edge : node.GetEdgesOut()) edges_.push_back(edge);
    };
    ForEachNodeIn(root_, take, false, false);
    sort_by_id(nodes_);
    sort_by_id(edges_);
    number_nodes();
    // An edge may have outlived one of its ends.
    const auto is_loose = [this](const Edge& edge) { return ids_.count(edge.To().GetID()) == 0; };
    edges_.erase(std::remove_if(edges_.begin(), edges_.end(), is_loose), edges_.end());
}

void GraphListing::number_nodes() {
    std::vector<std::optional<int>> tags;
    for (const Node& node : nodes_) tags.push_back(node.GetTag());
    const std::vector<int> ids = ChooseIds(tags);
    for (std::size_t i = 0; i < nodes_.size(); ++i) ids_[nodes_[i].GetID()] = ids[i];
    ids_[root_.GetID()] = 0;
}

std::string GraphListing::IdOf(const Node& node) const {
    return std::to_string(ids_.at(node.GetID()));
}

const NodeLook& GraphListing::LookOf(const Node& node) const {
    static const NodeLook plain;
    const auto found = looks_.nodes.find(node.GetID());
    return found != looks_.nodes.end() ? found->second : plain;
}

const EdgeLook& GraphListing::LookOf(const Edge& edge) const {
    static const EdgeLook plain;
    const auto found = looks_.edges.find(edge.GetID());
    return found != looks_.edges.end() ? found->second : plain;
}

void GraphListing::Walk(const std::function<void(const Node&)>& open,
                        const std::function<void(const Node&)>& close) const {
    struct Level {
        Node node;
        NodeSet owned;
        int next;
    };
    std::vector<Level> path{{root_, root_.GetOwned(), 0}};
    while (!path.empty()) {
        Level& level = path.back();
        if (level.next < level.owned.GetCount()) {
            const Node child = level.owned.GetItem(level.next++);
            open(child);
            if (IsOwner(child)) path.push_back({child, child.GetOwned(), 0});
            continue;
        }
        if (path.size() > 1) close(level.node);
        path.pop_back();
    }
}

bool IsOwner(const Node& node) { return node.GetOwned().GetCount() > 0; }

std::string Replaced(std::string_view text, bool (*is_held)(char32_t), int& count) {
    std::string result;
    for (std::string_view rest = text; !rest.empty();) {
        const char32_t c = paintcore::TakeCodePoint(rest);
        paintcore::AppendCodePoint(result, is_held(c) ? c : paintcore::kReplacementCharacter);
    }
    count += result != text ? 1 : 0;
    return result;
}

}  // namespace nodeline::formats
