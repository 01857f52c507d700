#include <nodeline/model/recalculate.h>

#include <nodeline/ops/internal/absolute.h>
#include <paintcore/painter.h>

#include <algorithm>
#include <iterator>
#include <unordered_set>
#include <vector>

namespace nodeline {

namespace {

using Records = std::vector<graph_ptr<INodeImpl>>;

// A removed node has no owner and stands for itself, as the root does.
bool is_top(const graph_ptr<INodeImpl>& node) { return node->get_id() == 0 || !node->get_owner(); }

// The node and its owners, the outermost first.
Records path_to(graph_ptr<INodeImpl> node) {
    Records path{node};
    while (!is_top(node) && node->get_owner().get() != node.get()) {
        node = node->get_owner();
        path.push_back(node);
    }
    std::reverse(path.begin(), path.end());
    return path;
}

// The first entry of a key; `find` may give any of them.
RequestMap::const_iterator first_of(const RequestMap& map, int key) {
    const auto [first, last] = map.equal_range(key);
    return first != last ? first : map.end();
}

bool holds_behind(RequestMap::const_iterator first, const RequestMap& map, int id) {
    return std::any_of(first, map.end(),
                       [&](const auto& entry) { return entry.second->get_id() == id; });
}

// The requests for makes or updates: what `check_and_insert` files, with the root remembered.
class MakeRequests {
public:
    void File(const graph_ptr<INodeImpl>& node) {
        if (has_root_) return;
        has_root_ = node->get_id() == 0;
        records_.push_back(node);
    }
    [[nodiscard]] const Records& records() const { return records_; }

private:
    Records records_;
    bool has_root_ = false;
};

// The requests for resizes: what `insert_with_owners` files, with a set in the place of the search.
class ResizeRequests {
public:
    void File(const graph_ptr<INodeImpl>& node) {
        for (const auto& record : path_to(node)) file_one(record);
    }
    void FileOwner(const graph_ptr<INodeImpl>& node) {
        if (is_top(node)) return;
        File(node->get_owner());
    }
    [[nodiscard]] const Records& records() const { return records_; }

private:
    void file_one(const graph_ptr<INodeImpl>& record) {
        if (records_.empty()) {
            records_.push_back(record);
        } else if (behind_first_.insert(record->get_id()).second) {
            records_.push_back(record);
        }
    }

    Records records_;
    std::unordered_set<int> behind_first_;
};

Records items_of(const graph_ptr<IGraphSet<graph_ptr<INodeImpl>>>& list) {
    Records items;
    for (int i = 0; i < list->GetCount(); ++i) items.push_back(list->GetItem(i));
    return items;
}

// A paint bracket for the length of the pass, unless the painter is inside one. An exception from a
// layout leaves it open: the state of the painter is then as unfinished as the pass.
class PaintBracket {
public:
    explicit PaintBracket(IPainter* painter)
        : painter_(painter != nullptr && !painter->IsPainting() ? painter : nullptr) {
        if (painter_ != nullptr) painter_->BeginPaint(IPainter::StdSettings::All);
    }
    void Close() {
        if (painter_ != nullptr) painter_->EndPaint();
    }

private:
    IPainter* painter_;
};

}  // namespace

bool check_and_insert(RequestMap* map, graph_ptr<INodeImpl> node, int* depth, bool insert) {
    const Records path = path_to(node);
    *depth = static_cast<int>(path.size()) - 1;
    for (int i = 0; i <= *depth; ++i) {
        const auto first = first_of(*map, i);
        const int id = path[static_cast<std::size_t>(i)]->get_id();
        if (first != map->end() && holds_behind(first, *map, id)) return true;
    }
    if (insert) map->emplace(0, node);
    return false;
}

void insert_with_owners(RequestMap* map, graph_ptr<INodeImpl> node) {
    for (const auto& record : path_to(node)) {
        const auto first = first_of(*map, 0);
        if (first == map->end() || !holds_behind(std::next(first), *map, record->get_id())) {
            map->emplace(0, record);
        }
    }
}

bool is_redundant(std::pair<const int, graph_ptr<INodeImpl>> entry, RequestMap* map) {
    graph_ptr<INodeImpl> node = entry.second;
    for (int key = entry.first;; --key) {
        const auto first = first_of(*map, key);
        if (first != map->end() && holds_behind(std::next(first), *map, node->get_id())) {
            return true;
        }
        if (node->get_id() == 0 || map->empty() || key < map->begin()->first) return false;
    }
}

void _remove_break_nodes(Edge edge) { edge.RemoveBreakNodes(); }

bool Graph::RecalculateLayout(IPainter* painter) {
    const Records make_list = items_of(store_->get_make_list());
    const Records update_list = items_of(store_->get_update_list());
    const Records resize_list = items_of(store_->get_resize_list());
    if (make_list.empty() && update_list.empty() && resize_list.empty()) return false;

    MakeRequests makes;
    MakeRequests updates;
    ResizeRequests resizes;
    for (const auto& node : make_list) makes.File(node);
    for (const auto& node : update_list) updates.File(node);
    for (const auto& node : resize_list) resizes.File(node);
    for (const auto& node : make_list) resizes.FileOwner(node);
    for (const auto& node : update_list) resizes.FileOwner(node);

    PaintBracket bracket(painter);
    const auto backwards = [this](const Records& records, auto run) {
        for (auto it = records.rbegin(); it != records.rend(); ++it) {
            const Node node(store_, *it);
            if (const graph_ptr2<ILayout> layout = node.GetLayout()) run(*layout, node);
        }
    };
    backwards(makes.records(), [](ILayout& layout, const Node& node) {
        layout.Make(node);
        internal::make_absolute(node);
    });
    backwards(updates.records(), [](ILayout& layout, const Node& node) {
        layout.Update(node);
        internal::make_absolute(node);
    });
    backwards(resizes.records(), [](ILayout& layout, const Node& node) { layout.Resize(node); });
    bracket.Close();

    store_->clear_make_list();
    store_->clear_update_list();
    store_->clear_resize_list();
    return true;
}

}  // namespace nodeline
