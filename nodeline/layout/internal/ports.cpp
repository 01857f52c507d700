#include <nodeline/layout/internal/steps.h>

#include <optional>

namespace nodeline::internal {

namespace {

// Finds what a port on the border leads to inside: a bend of its edge, or the node at its end.
class PortNeighbours {
public:
    PortNeighbours(LayoutRun& run, Order side) : run_(run), side_(side) {}

    // The y of the neighbour, or of the port inside it at which the edge goes on.
    [[nodiscard]] std::optional<double> GetY(const DummyState& port) const {
        std::optional<double> y;
        run_.find_shape(port.edge, [&](const LinkShape& shape) {
            y = get_y(shape, port);
            return y.has_value();
        });
        return y;
    }

private:
    // The side on which the edge meets the neighbour: the other one than the border's.
    [[nodiscard]] Order far_side() const { return side_ == ORDER_IN ? ORDER_OUT : ORDER_IN; }

    [[nodiscard]] std::optional<double> get_y(const LinkShape& shape,
                                              const DummyState& port) const {
        const int i = port.index;
        if (i < shape.first || i > shape.last || (i - shape.first) % 2 != 0) return std::nullopt;
        // From the left border one looks forward, from the right one back.
        const bool along_chain = (side_ == ORDER_IN) == shape.forward;
        if (along_chain) {
            return i < shape.last ? get_y_of_bend(port.edge, i + 2)
                                  : get_y_of_node(port.edge, shape.tail_id);
        }
        return i > shape.first ? get_y_of_bend(port.edge, i - 2)
                               : get_y_of_node(port.edge, shape.head_id);
    }

    [[nodiscard]] double get_y_of_bend(EdgeIndex e, int index) const {
        const EdgeState& edge = at(run_.edges, e);
        const Vertex v = at(run_.break_vertices(), edge.region + index);
        return v != kNoVertex ? at(run_.y, v) : edge.chain->GetPositionAt(index).y;
    }

    // The node may have left the owner since the link was made.
    [[nodiscard]] std::optional<double> get_y_of_node(EdgeIndex e, int id) const {
        if (id == 0) return std::nullopt;
        const EdgeState& edge = at(run_.edges, e);
        for (const Vertex v : {edge.from, edge.to}) {
            if (v == kNoVertex || run_.id_of(v) != id) continue;
            const double middle = 0.5 * at(run_.sizes, v).cy;
            return at(run_.y, v) + run_.port_offset(e, v, far_side(), middle);
        }
        return get_y_outside(*edge.vis, id);
    }

    [[nodiscard]] std::optional<double> get_y_outside(const DefaultEdgeVis& vis, int id) const {
        for (graph_ptr<INodeImpl> p : {vis.impl()->from(), vis.impl()->to()}) {
            while (p && p->get_id() != id && p->get_owner().get() != p.get()) p = p->get_owner();
            if (!p || p->get_id() != id) continue;
            const Node node = run_.handle(p);
            const BreakChain* inner = vis.FindChain(id);
            if (inner == nullptr || inner->GetCount() == 0) {
                return node.GetPosition().y + 0.5 * node.GetSize().cy;
            }
            const int place = far_side() == ORDER_OUT ? inner->GetCount() - 1 : 0;
            return node.GetPosition().y + inner->GetPositionAt(place).y;
        }
        return std::nullopt;
    }

    LayoutRun& run_;
    Order side_;
};

}  // namespace

void adjust_ports(LayoutRun& run, const std::vector<Vertex>& level, double border_x, Order side) {
    const PortNeighbours neighbours(run, side);
    for (const Vertex port : level) {
        if (!run.is_dummy(port) || run.is_dead(port)) continue;
        const DummyState state = run.dummy_state(port);
        if (const auto y = neighbours.GetY(state)) {
            run.move_bend(state.edge, state.index, border_x, *y);
        }
    }
}

}  // namespace nodeline::internal
