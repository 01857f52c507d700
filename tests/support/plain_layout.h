// The incremental layout spelled out step by step on handles and ordered maps: slow, recursive,
// exponential at times, and easy to check by eye. Tests hold the real one against it, bit for bit.
#pragma once

#include <nodeline/model/graph.h>
#include <nodeline/ops/graph_ops.h>

#include <map>
#include <vector>

namespace nodeline::test {

struct ById {
    template <class T>
    bool operator()(const T& a, const T& b) const {
        return a.GetID() < b.GetID();
    }
};

// Ordered maps in which every read makes a default record.
template <class N, class E>
struct GraphInfoStore {
    std::map<Node, N, ById> nodes;
    std::map<Edge, E, ById> edges;

    N& operator[](const Node& node) { return nodes[node]; }
    E& operator[](const Edge& edge) { return edges[edge]; }
    void Clear() {
        nodes.clear();
        edges.clear();
    }
};

class PlainLayout : public ILayout {
public:
    enum Order { ORDER_IN, ORDER_OUT };
    enum DependenceLevel { DEPEND_IN, DEPEND_OUT, DEPEND_INOUT };

    struct NodeInfo {
        int level = -1;
        bool old = false;
        bool was_hidden = false;
    };
    struct EdgeInfo {
        bool old = false;
    };
    struct LocalNodeInfo {
        bool visited = false;
        int backedge_count = 0;
        int number = -1;
        std::vector<NodeEdgePair> in;
        std::vector<NodeEdgePair> out;
    };
    struct LocalEdgeInfo {
        bool reversed = false;
        bool flat = false;
        bool marked = false;
    };
    struct Level {
        double start = 0.0;
        double end = 0.0;
        double width = 0.0;
    };
    struct FreeSpace {
        double start;
        double end;
        double size;
    };
    using Infos = GraphInfoStore<NodeInfo, EdgeInfo>;
    using Nodes = std::vector<Node>;

    void Make(Node node) override;
    void Update(Node node) override;
    void Resize(Node node) override;

    // What `Make` does before its first step, contents included.
    void BeginMake(Node node);
    // What `Update` does before its first step, contents included.
    void BeginUpdate(Node node);

    // The steps.
    void determine_levels();
    void place_nodes_on_levels();
    void barycentric_adjust();
    void calculate_initial_y_coords();
    void force_adjust();
    void calculate_x_coords();
    void restore_old_levels();
    void make_y_shifts();
    void determine_new_nodes_levels();
    void calculate_new_nodes_y_coords();
    void mark_old();

    // Parts of steps.
    std::vector<Nodes> find_connectivity_components(const Nodes& all);
    void enumerate_connectivity_component(const Nodes& component);
    void mark_reversed_edges(const Nodes& some, bool by_number);
    void mark_levels(const Nodes& some);
    void mark_new_nodes_levels(const Nodes& component);
    void force_adjust_block(const Node* first, const Node* last, DependenceLevel dependence,
                            bool with_dummies, double lower, double upper);

    Infos* infos = nullptr;
    Infos old_infos;
    GraphInfoStore<LocalNodeInfo, LocalEdgeInfo> local_infos;
    std::vector<Level>* level_extents = nullptr;
    std::vector<Nodes> levels;
    Nodes nodes;
    size<double> extent{0.0, 0.0};

    double level_spacing = 30.0;
    double node_spacing = 12.0;
    double dummy_spacing = 2.0;
    double backedge_spacing = 5.0;
    bool include_hidden = true;

private:
    using Pairs = std::vector<NodeEdgePair>;

    static Pairs pairs(const graph_ptr2<IGraphSet<NodeEdgePair>>& set);
    static Nodes chain(const Edge& edge, const Node& owner);
    static bool is_hidden(const Node& node) { return IsFlagSet(node, NodeHidden); }
    bool skip(const Node& node) const { return !include_hidden && is_hidden(node); }
    bool was_old(const Node& node);
    bool was_old_and_shown(const Node& node);
    bool was_old(const Edge& edge, const Node& owner);
    bool _is_new(const Node& node);
    double _get_height(const Node& node);
    double half_spacing(const Node& node) const {
        return 0.5 * (node.IsDummy() ? dummy_spacing : node_spacing);
    }
    void ask_all_edges() const;
    void mark_as_neighbours(const Node& a, const Node& b, const Edge& edge);
    Nodes& level_at(int index);

    void collect_connectivity_component(const Node& node, Nodes* component);
    void _mark_edges(const Node& node);
    int _degree(const Pairs& set) const;
    int _degree_ex(const Node& node, bool LocalEdgeInfo::*flag, Order order, bool with_opposite);
    int count_degree(const Node& node, const Pairs& set, bool LocalEdgeInfo::*flag, bool wanted);
    void set_node_level(const Node& node, int level);
    void tighten_start_nodes(const Nodes& starts);

    void shift_old_levels();
    void place_new_nodes();
    void insert_dummy_nodes_between(const Node& from, const Node& to, Edge edge);
    void insert_dummy_nodes_inout(const Node& node, Order order);

    double key_of(const Node& node, Pairs LocalNodeInfo::*side);
    void sort_level(Nodes* level, Pairs LocalNodeInfo::*side);
    static void enumerate_level_by_y_coord(Nodes* level);
    static point<double> get_inout_coords(const NodeEdgePair& pair, Order side);

    void place_normal_node(Node node, double left, double right, double y);
    void place_break_node(Node node, double left, double right, double y, const Node& owner);
    void adjust_break_to_inner(Node break_node, const Node& inner, double x, double y, Order side);
    void adjust_ports(const Nodes& level, double x, Order side);

    void restore_old_dummy(const Node& u);
    void restore_to_child(const Node& u, const Node& v, const Edge& e);
    void cut_table(int level);
    bool choose_level(const std::vector<int>& parents, const std::vector<int>& children,
                      int* level) const;
    void settle(Nodes rest);
    void fill_level(const Nodes& level);

    std::map<Node, Infos, ById> owner_infos_;
    std::map<Node, std::vector<Level>, ById> owner_levels_;
};

}  // namespace nodeline::test
