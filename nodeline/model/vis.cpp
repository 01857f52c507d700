#include <nodeline/model/vis.h>

#include <nodeline/handlers/handlers.h>
#include <nodeline/layout/inc_layout.h>
#include <nodeline/model/break_nodes.h>
#include <nodeline/model/internal/hit_test.h>
#include <nodeline/model/internal/id_table.h>

#include <algorithm>
#include <utility>
#include <vector>

namespace nodeline {

namespace {

// The state of a break node lies with its record; this makes it answer like any node.
class BreakNodeVis : public INodeVis {
public:
    explicit BreakNodeVis(DummyNodeImpl* impl) : impl_(impl) {}

    [[nodiscard]] graph_ptr<INodeImpl> get_node_impl() const override { return impl_; }
    [[nodiscard]] size<double> get_size() const override { return impl_->extent(); }
    void set_size(const size<double>& value) override { impl_->set_extent(value); }
    [[nodiscard]] point<double> get_position() const override { return impl_->position(); }
    void set_position(const point<double>& value) override { impl_->set_position(value); }

private:
    graph_ptr<DummyNodeImpl> impl_;
};

DummyNodeImpl* as_break_node(const graph_ptr<INodeImpl>& impl) {
    return impl->get_id() < 0 ? dynamic_cast<DummyNodeImpl*>(impl.get()) : nullptr;
}

}  // namespace

// The value of the store's node table. Any of the three may be empty.
struct NodeVisInfo {
    graph_ptr2<ILayout> layout;
    graph_ptr2<INodeHandler> painter;
    graph_ptr<DefaultNodeVis> vis;
};

struct EdgeVisInfo {
    graph_ptr<DefaultEdgeVis> vis;
};

struct Attachment {
    graph_ptr<Countable> token;
    graph_ptr<Countable> item;
};

struct DefaultGraphVis::Tables {
    graph_ptr2<ILayout> default_layout;
    graph_ptr2<INodeHandler> default_node_painter;
    graph_ptr2<IEdgeHandler> default_edge_painter;
    internal::IdTable<NodeVisInfo> nodes;
    internal::IdTable<EdgeVisInfo> edges;
    graph_ptr<NodeImplSet> make_list{new NodeImplSet};
    graph_ptr<NodeImplSet> update_list{new NodeImplSet};
    graph_ptr<NodeImplSet> resize_list{new NodeImplSet};
    graph_ptr<Revision> revision{new Revision};
    unsigned long long handler_changes = 0;
    std::vector<Attachment> attachments;
    internal::NodeHits node_hits;
    internal::EdgeHits edge_hits;
};

DefaultGraphVis::DefaultGraphVis() : tables_(std::make_unique<Tables>()) {
    tables_->default_layout = GetDefaultLayout();
    tables_->default_node_painter = GetDefaultNodeHandler();
}

DefaultGraphVis::~DefaultGraphVis() = default;

graph_ptr<Countable>& DefaultGraphVis::attachment(const graph_ptr<Countable>& token) {
    auto& all = tables_->attachments;
    const auto is_orphan = [](const Attachment& a) { return a.token->GetRefCount() == 1; };
    all.erase(std::remove_if(all.begin(), all.end(), is_orphan), all.end());
    const auto found = std::find_if(
        all.begin(), all.end(), [&](const Attachment& a) { return a.token.get() == token.get(); });
    if (found != all.end()) return found->item;
    all.push_back({token, {}});
    return all.back().item;
}

graph_ptr<IEdgeVis> DefaultGraphVis::get_edge_vis(graph_ptr<IEdgeImpl> impl) {
    if (!impl) return {};
    EdgeVisInfo& info = tables_->edges.Get(impl->get_id());
    if (!info.vis) {
        info.vis = graph_ptr<DefaultEdgeVis>(new DefaultEdgeVis(impl, tables_->revision));
        tables_->revision->Advance();
    }
    return info.vis;
}

graph_ptr<INodeVis> DefaultGraphVis::get_node_vis(graph_ptr<INodeImpl> impl) {
    if (!impl) return {};
    if (DummyNodeImpl* bend = as_break_node(impl)) return {new BreakNodeVis(bend)};
    NodeVisInfo& info = tables_->nodes.Get(impl->get_id());
    if (!info.vis) {
        info.vis = graph_ptr<DefaultNodeVis>(new DefaultNodeVis(impl, tables_->revision));
        tables_->revision->Advance();
    }
    return info.vis;
}

void DefaultGraphVis::remove_edge_vis(graph_ptr<IEdgeImpl> impl) {
    if (!impl) return;
    tables_->edges.Erase(impl->get_id());
    tables_->revision->Advance();
}

void DefaultGraphVis::remove_node_vis(graph_ptr<INodeImpl> impl) {
    if (!impl) return;
    if (DummyNodeImpl* bend = as_break_node(impl)) {
        bend->set_position({0.0, 0.0});
        bend->set_extent({0.0, 0.0});
    }
    tables_->nodes.Erase(impl->get_id());
    tables_->revision->Advance();
}

graph_ptr2<ILayout> DefaultGraphVis::get_node_layout(graph_ptr<INodeImpl> impl) {
    NodeVisInfo* info = impl ? tables_->nodes.Find(impl->get_id()) : nullptr;
    return info != nullptr && info->layout ? info->layout : get_default_layout();
}

void DefaultGraphVis::set_node_layout(graph_ptr<INodeImpl> impl, graph_ptr2<ILayout> layout) {
    if (impl) tables_->nodes.Get(impl->get_id()).layout = layout;
}

graph_ptr2<INodeHandler> DefaultGraphVis::get_node_painter(graph_ptr<INodeImpl> impl) {
    NodeVisInfo* info = impl ? tables_->nodes.Find(impl->get_id()) : nullptr;
    return info != nullptr && info->painter ? info->painter : get_default_node_painter();
}

void DefaultGraphVis::set_node_painter(graph_ptr<INodeImpl> impl,
                                       graph_ptr2<INodeHandler> painter) {
    if (!impl) return;
    ++tables_->handler_changes;
    tables_->nodes.Get(impl->get_id()).painter = painter;
}

graph_ptr2<ILayout> DefaultGraphVis::get_default_layout() {
    if (!tables_->default_layout) tables_->default_layout = GetDefaultLayout();
    return tables_->default_layout;
}

void DefaultGraphVis::set_default_layout(graph_ptr2<ILayout> layout) {
    tables_->default_layout = layout;
}

graph_ptr2<INodeHandler> DefaultGraphVis::get_default_node_painter() {
    if (!tables_->default_node_painter) tables_->default_node_painter = GetDefaultNodeHandler();
    return tables_->default_node_painter;
}

void DefaultGraphVis::set_default_node_painter(graph_ptr2<INodeHandler> painter) {
    ++tables_->handler_changes;
    tables_->default_node_painter = painter;
}

graph_ptr2<IEdgeHandler> DefaultGraphVis::get_default_edge_painter() {
    if (!tables_->default_edge_painter) tables_->default_edge_painter = GetDefaultEdgeHandler();
    return tables_->default_edge_painter;
}

void DefaultGraphVis::set_default_edge_painter(graph_ptr2<IEdgeHandler> painter) {
    ++tables_->handler_changes;
    tables_->default_edge_painter = painter;
}

graph_ptr<NodeImplSet> DefaultGraphVis::test_node_hit(double x1, double y1, double x2, double y2) {
    const internal::HitQuery query{x1, y1, x2, y2};
    const auto for_each = [this](auto visit) {
        tables_->nodes.ForEach([&](int, NodeVisInfo& info) {
            if (info.vis) visit(info.vis.get());
        });
    };
    return tables_->node_hits.Find(query, tables_->revision->value(), for_each);
}

unsigned long long DefaultGraphVis::picture_revision() const {
    return tables_->revision->value() + tables_->handler_changes;
}

graph_ptr<EdgeImplSet> DefaultGraphVis::test_edge_hit(double x1, double y1, double x2, double y2) {
    const internal::HitQuery query{x1, y1, x2, y2};
    const auto for_each = [this](auto visit) {
        tables_->edges.ForEach([&](int, EdgeVisInfo& info) {
            if (info.vis) visit(info.vis.get());
        });
    };
    return tables_->edge_hits.Find(query, tables_->revision->value(), for_each);
}

void DefaultGraphVis::add_to_make_list(graph_ptr<INodeImpl> impl) {
    if (impl) tables_->make_list->Add(impl);
}
graph_ptr<IGraphSet<graph_ptr<INodeImpl>>> DefaultGraphVis::get_make_list() {
    return tables_->make_list;
}
void DefaultGraphVis::clear_make_list() { tables_->make_list->Clear(); }

void DefaultGraphVis::add_to_update_list(graph_ptr<INodeImpl> impl) {
    if (impl) tables_->update_list->Add(impl);
}
graph_ptr<IGraphSet<graph_ptr<INodeImpl>>> DefaultGraphVis::get_update_list() {
    return tables_->update_list;
}
void DefaultGraphVis::clear_update_list() { tables_->update_list->Clear(); }

void DefaultGraphVis::add_to_resize_list(graph_ptr<INodeImpl> impl) {
    if (impl) tables_->resize_list->Add(impl);
}
graph_ptr<IGraphSet<graph_ptr<INodeImpl>>> DefaultGraphVis::get_resize_list() {
    return tables_->resize_list;
}
void DefaultGraphVis::clear_resize_list() { tables_->resize_list->Clear(); }

}  // namespace nodeline
