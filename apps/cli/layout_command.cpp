#include <apps/cli/commands.h>
#include <nodeline/ops/graph_ops.h>

#include <nlohmann/json.hpp>

#include <iostream>
#include <string>
#include <utility>

namespace nodeline::cli {

namespace {

using Json = nlohmann::ordered_json;

// A negative zero is an accident of arithmetic.
Json pair_of(double x, double y) { return Json::array({x + 0.0, y + 0.0}); }

Json position_of(const Node& node) {
    const point<double> position = node.GetPosition();
    return pair_of(position.x, position.y);
}

Json size_of(const Node& node) {
    const nodeline::size<double> size = node.GetSize();
    return pair_of(size.cx, size.cy);
}

Json describe(const Node& node) {
    return {{"id", node.GetTag()},
            {"caption", node.GetCaption()},
            {"owner", node.GetOwner().GetTag()},
            {"position", position_of(node)},
            {"size", size_of(node)},
            {"hidden", !IsFlagSet(node, NodeDrawn)}};
}

Json describe(const Edge& edge) {
    Json route = Json::array();
    // What hidden nodes own may have been laid out as well, each owner for itself.
    if (IsFlagSet(edge, EdgeDrawn)) {
        for (const Node& bend : edge.GetBreakNodes()) route.push_back(position_of(bend));
    }
    return {{"from", edge.From().GetTag()},
            {"to", edge.To().GetTag()},
            {"caption", edge.GetCaption()},
            {"route", std::move(route)}};
}

// Captions may hold bytes that are no UTF-8; JSON may not.
std::string text_of(const Json& json) {
    return json.dump(-1, ' ', false, Json::error_handler_t::replace);
}

template <class Items>
void print_array(const char* name, const Items& items) {
    std::cout << ",\n\"" << name << "\":[";
    const char* separator = "\n";
    for (const auto& item : items) {
        std::cout << separator << text_of(describe(item));
        separator = ",\n";
    }
    std::cout << "]";
}

}  // namespace

// One line per node and edge, without a tree of the whole in memory.
void RunLayout(const GraphOptions& options) {
    const LaidOutGraph laid_out(options);
    const Node root = laid_out.graph()->GetRoot();
    const Json root_json = {{"position", position_of(root)}, {"size", size_of(root)}};
    std::cout << "{\"root\":" << text_of(root_json);
    print_array("nodes", laid_out.nodes());
    print_array("edges", laid_out.edges());
    std::cout << "}\n";
    FinishOutput();
}

}  // namespace nodeline::cli
