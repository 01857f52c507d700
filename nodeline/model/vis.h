// What concerns the picture of a graph: positions, sizes, routes, handlers, layouts, work lists.
//
// The visual store is keyed by record id and kept apart from storage. It owns no records of
// storage; it answers for any record, and makes what it lacks when it is asked: reads never fail.
#pragma once

#include <corvex/export.h>
#include <nodeline/model/geometry.h>
#include <nodeline/model/graph_ptr.h>
#include <nodeline/model/storage.h>

#include <memory>

namespace nodeline {

class IEdgeHandler;
class ILayout;
class INodeHandler;

// Position and size of a node: logical units, the position being the top left corner.
class NODELINE_API INodeVis : public Countable {
public:
    // The record of the node.
    [[nodiscard]] virtual graph_ptr<INodeImpl> get_node_impl() const = 0;
    // All zero until they are set.
    [[nodiscard]] virtual size<double> get_size() const = 0;
    virtual void set_size(const size<double>& value) = 0;
    [[nodiscard]] virtual point<double> get_position() const = 0;
    virtual void set_position(const point<double>& value) = 0;
};

// The route of an edge: its break nodes, kept per owner that the edge runs through, in order from
// source to target.
class NODELINE_API IEdgeVis : public Countable {
public:
    // The record of the edge.
    [[nodiscard]] virtual graph_ptr<IEdgeImpl> get_edge_impl() const = 0;
    // The whole route as one set: up through the owners of the source, then down to the target.
    virtual graph_ptr<NodeImplSet> get_break_nodes() = 0;
    // Forgets the whole route.
    virtual void remove_break_nodes() = 0;
    // The live set of one owner; asking makes an empty one.
    virtual graph_ptr<NodeImplSet> get_break_nodes_in(int owner_id) = 0;
    // Appends `count` new break nodes at (0, 0); a count below 1 does nothing.
    virtual void add_break_nodes_in(int owner_id, int count) = 0;
    // Forgets the stretch of one owner.
    virtual void remove_break_nodes_in(int owner_id) = 0;
};

// The visual store of a graph. A null record is answered with an empty handle, or with the default
// layout or handler.
class NODELINE_API IGraphVis : public Countable {
public:
    // The visual record of an edge or a node; made at the first call.
    virtual graph_ptr<IEdgeVis> get_edge_vis(graph_ptr<IEdgeImpl> impl) = 0;
    virtual graph_ptr<INodeVis> get_node_vis(graph_ptr<INodeImpl> impl) = 0;
    // Forget everything about a record, its layout and handler included.
    virtual void remove_edge_vis(graph_ptr<IEdgeImpl> impl) = 0;
    virtual void remove_node_vis(graph_ptr<INodeImpl> impl) = 0;
    // The node's own layout or handler, or the default where it has none.
    virtual graph_ptr2<ILayout> get_node_layout(graph_ptr<INodeImpl> impl) = 0;
    virtual void set_node_layout(graph_ptr<INodeImpl> impl, graph_ptr2<ILayout> layout) = 0;
    virtual graph_ptr2<INodeHandler> get_node_painter(graph_ptr<INodeImpl> impl) = 0;
    virtual void set_node_painter(graph_ptr<INodeImpl> impl, graph_ptr2<INodeHandler> painter) = 0;
    // Defaults; an empty one is filled from the default of the process when it is asked for.
    virtual graph_ptr2<ILayout> get_default_layout() = 0;
    virtual void set_default_layout(graph_ptr2<ILayout> layout) = 0;
    virtual graph_ptr2<INodeHandler> get_default_node_painter() = 0;
    virtual void set_default_node_painter(graph_ptr2<INodeHandler> painter) = 0;
    virtual graph_ptr2<IEdgeHandler> get_default_edge_painter() = 0;
    virtual void set_default_edge_painter(graph_ptr2<IEdgeHandler> painter) = 0;
    // The nodes and edges that meet the closed rectangle with the left top corner (x1, y1) and the
    // right bottom corner (x2, y2), by rising id. A query strictly inside compound nodes gives only
    // the innermost of them, behind the others. The time goes with what is met, not with the graph,
    // while nothing moves between queries; else it is linear.
    virtual graph_ptr<NodeImplSet> test_node_hit(double x1, double y1, double x2, double y2) = 0;
    virtual graph_ptr<EdgeImplSet> test_edge_hit(double x1, double y1, double x2, double y2) = 0;
    // The work lists, in order of the requests; the lists given out are live.
    virtual void add_to_make_list(graph_ptr<INodeImpl> impl) = 0;
    virtual graph_ptr<IGraphSet<graph_ptr<INodeImpl>>> get_make_list() = 0;
    virtual void clear_make_list() = 0;
    virtual void add_to_update_list(graph_ptr<INodeImpl> impl) = 0;
    virtual graph_ptr<IGraphSet<graph_ptr<INodeImpl>>> get_update_list() = 0;
    virtual void clear_update_list() = 0;
    virtual void add_to_resize_list(graph_ptr<INodeImpl> impl) = 0;
    virtual graph_ptr<IGraphSet<graph_ptr<INodeImpl>>> get_resize_list() = 0;
    virtual void clear_resize_list() = 0;
};

// A number that goes up whenever anything that hit tests depend on may have changed.
class NODELINE_API Revision : public Countable {
public:
    // To be called after each such change.
    void Advance() noexcept { ++value_; }
    // To be compared with earlier values of the same object alone.
    [[nodiscard]] unsigned long long value() const noexcept { return value_; }

private:
    unsigned long long value_ = 0;
};

// The stock position and size of a node that is no break node.
class NODELINE_API DefaultNodeVis : public INodeVis {
public:
    // `revision`, which is not null, advances with each change.
    DefaultNodeVis(graph_ptr<INodeImpl> impl, graph_ptr<Revision> revision)
        : impl_(std::move(impl)), revision_(std::move(revision)) {}

    [[nodiscard]] graph_ptr<INodeImpl> get_node_impl() const override { return impl_; }
    [[nodiscard]] size<double> get_size() const override { return size_; }
    void set_size(const size<double>& value) override {
        size_ = value;
        revision_->Advance();
    }
    [[nodiscard]] point<double> get_position() const override { return position_; }
    void set_position(const point<double>& value) override {
        position_ = value;
        revision_->Advance();
    }

    // The record without a count.
    [[nodiscard]] INodeImpl* impl() const { return impl_.get(); }

private:
    graph_ptr<INodeImpl> impl_;
    size<double> size_{0.0, 0.0};
    point<double> position_{0.0, 0.0};
    graph_ptr<Revision> revision_;
};

// The store that a graph makes for itself.
class NODELINE_API DefaultGraphVis : public IGraphVis {
public:
    DefaultGraphVis();
    ~DefaultGraphVis() override;

    graph_ptr<IEdgeVis> get_edge_vis(graph_ptr<IEdgeImpl> impl) override;
    graph_ptr<INodeVis> get_node_vis(graph_ptr<INodeImpl> impl) override;
    void remove_edge_vis(graph_ptr<IEdgeImpl> impl) override;
    void remove_node_vis(graph_ptr<INodeImpl> impl) override;
    graph_ptr2<ILayout> get_node_layout(graph_ptr<INodeImpl> impl) override;
    void set_node_layout(graph_ptr<INodeImpl> impl, graph_ptr2<ILayout> layout) override;
    graph_ptr2<INodeHandler> get_node_painter(graph_ptr<INodeImpl> impl) override;
    void set_node_painter(graph_ptr<INodeImpl> impl, graph_ptr2<INodeHandler> painter) override;
    graph_ptr2<ILayout> get_default_layout() override;
    void set_default_layout(graph_ptr2<ILayout> layout) override;
    graph_ptr2<INodeHandler> get_default_node_painter() override;
    void set_default_node_painter(graph_ptr2<INodeHandler> painter) override;
    graph_ptr2<IEdgeHandler> get_default_edge_painter() override;
    void set_default_edge_painter(graph_ptr2<IEdgeHandler> painter) override;
    graph_ptr<NodeImplSet> test_node_hit(double x1, double y1, double x2, double y2) override;
    graph_ptr<EdgeImplSet> test_edge_hit(double x1, double y1, double x2, double y2) override;
    void add_to_make_list(graph_ptr<INodeImpl> impl) override;
    graph_ptr<IGraphSet<graph_ptr<INodeImpl>>> get_make_list() override;
    void clear_make_list() override;
    void add_to_update_list(graph_ptr<INodeImpl> impl) override;
    graph_ptr<IGraphSet<graph_ptr<INodeImpl>>> get_update_list() override;
    void clear_update_list() override;
    void add_to_resize_list(graph_ptr<INodeImpl> impl) override;
    graph_ptr<IGraphSet<graph_ptr<INodeImpl>>> get_resize_list() override;
    void clear_resize_list() override;

    // What the holder of `token` keeps with this store; empty at first. It is dropped with the
    // store, and some time after the last other handle on the token is gone.
    graph_ptr<Countable>& attachment(const graph_ptr<Countable>& token);

    // Rises with every change of a position, a size, a route or a handler.
    [[nodiscard]] unsigned long long picture_revision() const;

    DefaultGraphVis(const DefaultGraphVis&) = delete;
    DefaultGraphVis& operator=(const DefaultGraphVis&) = delete;

private:
    struct Tables;

    std::unique_ptr<Tables> tables_;
};

}  // namespace nodeline
