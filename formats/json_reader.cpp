#include <formats/colors.h>
#include <formats/json_reader.h>
#include <formats/json_value.h>

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

namespace nodeline::formats {

namespace {

using Kind = JsonValue::Kind;

class JsonReader {
public:
    JsonReader(const std::string& name, Losses& losses) : name_(name), losses_(losses) {}

    FileGraph Read(const JsonValue& root) {
        expect(root, Kind::kObject, "the outermost value is no object");
        if (const JsonValue* graph = root.Find("graph")) {
            note_others(root, {"graph"});
            read_graph(*graph, FileGraph::kRoot);
        } else if (const JsonValue* graphs = root.Find("graphs")) {
            note_others(root, {"graphs", "label", "type", "metadata"});
            read_graphs(*graphs);
        } else if (root.Find("nodes") != nullptr) {
            note_others(root, {"root", "nodes", "edges"});
            read_layout(root);
        } else {
            refuse(root, "there is neither \"graph\" nor \"graphs\" nor \"nodes\"");
        }
        losses_.AddCount(repeated_, "node", "under an id that is taken");
        losses_.AddCount(circles_, "node", "in a circle of owners, taken to the top");
        return std::move(file_);
    }

private:
    // An owner that is looked for when all nodes are known.
    struct Claim {
        int node;
        std::string owner;
        int line;
    };

    [[noreturn]] void refuse(const JsonValue& value, const std::string& reason) const {
        throw ReadError(name_, value.line, reason);
    }

    void expect(const JsonValue& value, Kind kind, const std::string& reason) const {
        if (!value.Is(kind)) refuse(value, reason);
    }

    // Members that mean nothing here. An object of metadata is looked into by itself.
    void note_others(const JsonValue& object, std::initializer_list<std::string_view> known) {
        for (const std::string& key : object.keys) {
            if (std::find(known.begin(), known.end(), key) == known.end()) {
                losses_.AddAttribute(key);
            }
        }
    }

    [[nodiscard]] const JsonValue& need(const JsonValue& object, std::string_view key,
                                        const std::string& thing) const {
        const JsonValue* found = object.Find(key);
        if (found == nullptr) refuse(object, thing + " has no " + std::string(key));
        return *found;
    }

    // Ids are strings or integers.
    [[nodiscard]] std::string id_of(const JsonValue& value) const {
        if (!value.Is(Kind::kString) && !value.Is(Kind::kNumber)) {
            refuse(value, "an id is neither a string nor a number");
        }
        return value.text;
    }

    [[nodiscard]] std::optional<std::string> string_in(const JsonValue& object,
                                                       std::string_view key) const {
        const JsonValue* found = object.Find(key);
        if (found == nullptr || found->Is(Kind::kNull)) return std::nullopt;
        expect(*found, Kind::kString, "\"" + std::string(key) + "\" is no string");
        return found->text;
    }

    std::optional<paintcore::_color> color_in(const JsonValue& object, std::string_view key) {
        const JsonValue* found = object.Find(key);
        if (found == nullptr) return std::nullopt;
        const auto color = ParseColor(found->text);
        if (!color) losses_.AddColor(found->text);
        return color;
    }

    static std::optional<double> pen_width_in(const JsonValue& object) {
        const JsonValue* found = object.Find("penwidth");
        return found == nullptr ? std::nullopt : ParsePenWidth(found->text);
    }

    // The metadata of an object; an empty value if it has none.
    [[nodiscard]] const JsonValue& metadata_of(const JsonValue& object) const {
        static const JsonValue none;
        const JsonValue* found = object.Find("metadata");
        if (found == nullptr || found->Is(Kind::kNull)) return none;
        expect(*found, Kind::kObject, "\"metadata\" is no object");
        return *found;
    }

    void read_graphs(const JsonValue& graphs) {
        expect(graphs, Kind::kArray, "\"graphs\" is no array");
        for (const JsonValue& graph : graphs.items) {
            expect(graph, Kind::kObject, "a graph is no object");
            int owner = FileGraph::kRoot;
            if (graphs.items.size() > 1) {
                const std::string id = string_in(graph, "id").value_or("");
                owner = file_.AddNode({id, string_in(graph, "label").value_or(id)});
            }
            read_graph(graph, owner);
        }
    }

    void read_graph(const JsonValue& graph, int owner) {
        expect(graph, Kind::kObject, "\"graph\" is no object");
        note_others(graph, {"id", "label", "directed", "type", "nodes", "edges", "metadata"});
        note_others(metadata_of(graph), {});
        start_graph(owner);
        if (const JsonValue* nodes = graph.Find("nodes")) read_nodes(*nodes);
        settle_owners();
        if (const JsonValue* edges = graph.Find("edges")) {
            expect(*edges, Kind::kArray, "\"edges\" is no array");
            for (const JsonValue& edge : edges->items) read_edge(edge);
        }
    }

    void start_graph(int owner) {
        owner_ = owner;
        first_ = file_.CountNodes();
        places_.clear();
        claims_.clear();
    }

    void read_nodes(const JsonValue& nodes) {
        if (!nodes.Is(Kind::kObject)) {
            expect(nodes, Kind::kArray, "\"nodes\" is neither an array nor an object");
        }
        for (std::size_t i = 0; i < nodes.items.size(); ++i) {
            const JsonValue& node = nodes.items[i];
            expect(node, Kind::kObject, "a node is no object");
            const bool is_named = nodes.Is(Kind::kObject);
            read_node(node, is_named ? nodes.keys[i] : id_of(need(node, "id", "a node")));
        }
    }

    void read_node(const JsonValue& node, const std::string& id) {
        note_others(node, {"id", "label", "metadata", "owner", "parent"});
        const JsonValue& metadata = metadata_of(node);
        note_others(metadata, {"owner", "parent", "fillcolor", "color", "fontcolor", "penwidth"});
        FileNode made;
        made.name = id;
        made.caption = string_in(node, "label").value_or(id);
        made.look = {color_in(metadata, "fillcolor"), color_in(metadata, "color"),
                     color_in(metadata, "fontcolor"), pen_width_in(metadata)};
        const int place = add_node(std::move(made));
        for (const JsonValue* object : {&metadata, &node}) {
            for (const char* word : {"owner", "parent"}) {
                const JsonValue* owner = object->Find(word);
                if (owner == nullptr || owner->Is(Kind::kNull)) continue;
                claims_.push_back({place, id_of(*owner), node.line});
                return;
            }
        }
    }

    int add_node(FileNode made) {
        made.owner = owner_;
        if (!places_.emplace(made.name, file_.CountNodes()).second) ++repeated_;
        return file_.AddNode(std::move(made));
    }

    FileNode& node_at(int place) { return file_.nodes[static_cast<std::size_t>(place)]; }

    void settle_owners() {
        for (const Claim& claim : claims_) {
            const auto found = places_.find(claim.owner);
            if (found == places_.end()) {
                throw ReadError(name_, claim.line,
                                "the node \"" + Quote(node_at(claim.node).name) + "\" names \"" +
                                    Quote(claim.owner) + "\" as its owner, which is not declared");
            }
            node_at(claim.node).owner = found->second;
        }
        open_circles();
    }

    // Goes up from each node until a node is met that leads to the top for certain.
    void open_circles() {
        std::vector<int> walk_of(file_.nodes.size(), -1);
        for (int start = first_; start < file_.CountNodes(); ++start) {
            int last = start;
            for (int p = start; p >= first_; p = node_at(p).owner) {
                int& walk = walk_of[static_cast<std::size_t>(p)];
                if (walk == start) {
                    node_at(last).owner = owner_;
                    ++circles_;
                }
                if (walk != -1) break;
                walk = start;
                last = p;
            }
        }
    }

    void read_edge(const JsonValue& edge) {
        expect(edge, Kind::kObject, "an edge is no object");
        note_others(edge, {"id", "source", "target", "label", "relation", "directed", "metadata"});
        const JsonValue& metadata = metadata_of(edge);
        note_others(metadata, {"color", "penwidth"});
        FileEdge made;
        made.from = end_of(edge, "source");
        made.to = end_of(edge, "target");
        const auto label = string_in(edge, "label");
        const auto relation = string_in(edge, "relation");
        if (label && relation) losses_.AddAttribute("relation");
        made.caption = label ? *label : relation.value_or("");
        made.look = {color_in(metadata, "color"), pen_width_in(metadata)};
        file_.edges.push_back(std::move(made));
    }

    [[nodiscard]] int end_of(const JsonValue& edge, const char* end) const {
        const std::string id = id_of(need(edge, end, "an edge"));
        const auto found = places_.find(id);
        if (found != places_.end()) return found->second;
        refuse(edge, "an edge names the node \"" + Quote(id) + "\", which is not declared");
    }

    void read_layout(const JsonValue& root) {
        start_graph(FileGraph::kRoot);
        const JsonValue& nodes = *root.Find("nodes");
        expect(nodes, Kind::kArray, "\"nodes\" is no array");
        bool is_placed = true;
        for (const JsonValue& node : nodes.items) is_placed = read_placed_node(node) && is_placed;
        settle_owners();
        if (const JsonValue* edges = root.Find("edges")) {
            expect(*edges, Kind::kArray, "\"edges\" is no array");
            for (const JsonValue& edge : edges->items) {
                is_placed = read_routed_edge(edge) && is_placed;
            }
        }
        const JsonValue* whole = root.Find("root");
        if (is_placed && whole != nullptr) file_.place = place_of(*whole);
    }

    // Answers whether the node has a place.
    bool read_placed_node(const JsonValue& node) {
        expect(node, Kind::kObject, "a node is no object");
        note_others(node, {"id", "caption", "owner", "position", "size", "hidden"});
        FileNode made;
        made.name = id_of(need(node, "id", "a node"));
        made.caption = string_in(node, "caption").value_or(made.name);
        made.place = place_of(node);
        const JsonValue* hidden = node.Find("hidden");
        made.is_hidden = hidden != nullptr && hidden->boolean;
        const bool is_placed = made.place.has_value();
        const int place = add_node(std::move(made));
        const JsonValue* owner = node.Find("owner");
        if (owner != nullptr && id_of(*owner) != "0") {
            claims_.push_back({place, owner->text, node.line});
        }
        return is_placed;
    }

    // Answers whether the edge has a route, be it an empty one.
    bool read_routed_edge(const JsonValue& edge) {
        expect(edge, Kind::kObject, "an edge is no object");
        note_others(edge, {"from", "to", "caption", "route"});
        FileEdge made;
        made.from = end_of(edge, "from");
        made.to = end_of(edge, "to");
        made.caption = string_in(edge, "caption").value_or("");
        const JsonValue* route = edge.Find("route");
        if (route != nullptr) {
            expect(*route, Kind::kArray, "\"route\" is no array");
            for (const JsonValue& bend : route->items) {
                const auto [x, y] = pair_of(bend);
                made.route.push_back({x, y});
            }
        }
        file_.edges.push_back(std::move(made));
        return route != nullptr;
    }

    [[nodiscard]] std::pair<double, double> pair_of(const JsonValue& value) const {
        if (!value.Is(Kind::kArray) || value.items.size() != 2 ||
            !value.items[0].Is(Kind::kNumber) || !value.items[1].Is(Kind::kNumber)) {
            refuse(value, "a point or a size is no pair of numbers");
        }
        return {value.items[0].number, value.items[1].number};
    }

    [[nodiscard]] std::optional<Place> place_of(const JsonValue& object) const {
        const JsonValue* position = object.Find("position");
        const JsonValue* extent = object.Find("size");
        if (position == nullptr || extent == nullptr) return std::nullopt;
        const auto [x, y] = pair_of(*position);
        const auto [width, height] = pair_of(*extent);
        if (width < 0.0 || height < 0.0) refuse(*extent, "a size is less than zero");
        return Place{{x, y}, {width, height}};
    }

    const std::string& name_;
    Losses& losses_;
    FileGraph file_;
    // The graph under way: the owner of its nodes, the place of its first node, and places by id.
    int owner_ = FileGraph::kRoot;
    int first_ = 0;
    std::unordered_map<std::string, int> places_;
    std::vector<Claim> claims_;
    int repeated_ = 0;
    int circles_ = 0;
};

}  // namespace

FileGraph ReadJson(const std::string& name, std::string_view text, Losses& losses) {
    return JsonReader(name, losses).Read(ParseJson(name, text));
}

}  // namespace nodeline::formats
