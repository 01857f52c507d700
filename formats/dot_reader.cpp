#include <formats/dot_reader.h>

#ifdef NODELINE_WITH_DOT

#include <formats/colors.h>
#include <formats/dot_labels.h>
#include <formats/dot_parser.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <unordered_map>
#include <utility>
#include <vector>

namespace nodeline::formats {

namespace {

Agsym_t* find_attribute(Agraph_t* root, int kind, std::string name) {
    return agattr(root, kind, name.data(), nullptr);
}

// Whether a subgraph has a value of its own, rather than that of the graph around it.
bool has_own(Agraph_t* graph, const char* attribute) {
    std::string record = "_AG_datadict";
    void* found = aggetrec(graph, record.data(), 0);
    if (found == nullptr) return false;
    const auto* data = static_cast<const Agdatadict_t*>(found);
    std::string name = attribute;
    Agsym_t key = {};
    key.name = name.data();
    Dict_t* around = dtview(data->dict.g, nullptr);
    const bool is_own = dtsearch(data->dict.g, &key) != nullptr;
    dtview(data->dict.g, around);
    return is_own;
}

bool contains(std::string_view list, std::string_view word) {
    return list.find(word) != std::string_view::npos;
}

// The attributes of one kind of object that mean something here.
struct Attributes {
    Attributes(Agraph_t* root, int kind)
        : label(find_attribute(root, kind, "label")),
          shape(find_attribute(root, kind, "shape")),
          style(find_attribute(root, kind, "style")),
          fill(find_attribute(root, kind, "fillcolor")),
          color(find_attribute(root, kind, "color")),
          text(find_attribute(root, kind, "fontcolor")),
          pen_width(find_attribute(root, kind, "penwidth")),
          head(find_attribute(root, kind, "lhead")),
          tail(find_attribute(root, kind, "ltail")) {}

    Agsym_t* label;
    Agsym_t* shape;
    Agsym_t* style;
    Agsym_t* fill;
    Agsym_t* color;
    Agsym_t* text;
    Agsym_t* pen_width;
    Agsym_t* head;
    Agsym_t* tail;
};

// Reads one of the graphs of a file.
class GraphReader {
public:
    GraphReader(Agraph_t* root, FileGraph& file, Losses& losses)
        : root_(root),
          file_(file),
          losses_(losses),
          of_graphs_(root, AGRAPH),
          of_nodes_(root, AGNODE),
          of_edges_(root, AGEDGE) {
        const std::string charset = text_of(root, find_attribute(root, AGRAPH, "charset"));
        constexpr std::array<const char*, 7> kLatin1 = {
            "latin1", "latin-1", "Latin1", "l1", "iso-8859-1", "ISO-8859-1", "ISO_8859-1"};
        is_latin1_ = std::find(kLatin1.begin(), kLatin1.end(), charset) != kLatin1.end();
        names_.graph = name_of(root);
        // Graphs without a name are numbered by the parser.
        if (names_.graph.rfind('%', 0) == 0) names_.graph.clear();
    }

    void Read(bool stands_alone) {
        int owner = FileGraph::kRoot;
        if (!stands_alone) {
            // A label within the graph gives an empty one to the graph itself.
            const std::string label = label_of_graph(root_);
            owner = file_.AddNode({names_.graph, label.empty() ? names_.graph : label});
        }
        read_nodes(owner);
        read_clusters(owner);
        // Clusters were found behind all nodes, wherever the file opens them.
        file_.owners_have_places = false;
        read_edges();
        note_attributes();
        losses_.AddCount(static_cast<int>(shared_.size()), "node",
                         "in several clusters, taken into the first");
        losses_.AddCount(lost_ends_, "edge end", "at a cluster that is not there");
    }

private:
    [[nodiscard]] std::string converted(std::string_view text) const {
        return is_latin1_ ? FromLatin1(text) : std::string(text);
    }
    template <class Object>
    [[nodiscard]] static const char* value_of(Object* object, Agsym_t* attribute) {
        const char* value = attribute != nullptr ? agxget(object, attribute) : nullptr;
        return value != nullptr ? value : "";
    }
    template <class Object>
    [[nodiscard]] std::string text_of(Object* object, Agsym_t* attribute) const {
        return converted(value_of(object, attribute));
    }
    template <class Object>
    [[nodiscard]] std::string name_of(Object* object) const {
        const char* name = agnameof(object);
        return converted(name != nullptr ? name : "");
    }

    template <class Object>
    [[nodiscard]] std::string label_of(Object* object, Agsym_t* attribute, std::string_view shape,
                                       const LabelNames& names) const {
        const char* label = value_of(object, attribute);
        const std::string text = converted(label);
        if (*label != '\0' && aghtmlstr(const_cast<char*>(label)) != 0) return PlainHtml(text);
        return contains(shape, "record") ? PlainRecord(text, names) : PlainLabel(text, names);
    }

    [[nodiscard]] std::string label_of_graph(Agraph_t* graph) const {
        return label_of(graph, of_graphs_.label, "", names_);
    }

    std::optional<paintcore::_color> color_of(const std::string& text) {
        if (text.empty()) return std::nullopt;
        const auto color = ParseColor(text);
        if (!color) losses_.AddColor(text);
        return color;
    }

    std::optional<double> pen_width_of(const std::string& text) {
        const auto width = ParsePenWidth(text);
        if (!width && !text.empty()) losses_.AddAttribute("penwidth");
        return width;
    }

    template <class Object>
    NodeLook look_of(Object* object, const Attributes& attributes) {
        NodeLook look;
        const std::string style = text_of(object, attributes.style);
        if (!style.empty() && style != "filled") losses_.AddAttribute("style");
        look.border = color_of(text_of(object, attributes.color));
        look.fill = color_of(text_of(object, attributes.fill));
        if (!look.fill && contains(style, "filled")) look.fill = look.border;
        look.text = color_of(text_of(object, attributes.text));
        look.pen_width = pen_width_of(text_of(object, attributes.pen_width));
        return look;
    }

    void read_nodes(int owner) {
        for (Agnode_t* node = agfstnode(root_); node != nullptr; node = agnxtnode(root_, node)) {
            FileNode made;
            made.name = name_of(node);
            names_.node = made.name;
            made.caption = label_of(node, of_nodes_.label, text_of(node, of_nodes_.shape), names_);
            made.owner = owner;
            made.look = look_of(node, of_nodes_);
            places_[node] = file_.AddNode(std::move(made));
        }
        names_.node = LabelNames().node;
    }

    // Subgraphs in the order of the file; the parser lists them by their place in memory.
    [[nodiscard]] static std::vector<Agraph_t*> subgraphs_of(Agraph_t* graph) {
        std::vector<Agraph_t*> subgraphs;
        for (Agraph_t* g = agfstsubg(graph); g != nullptr; g = agnxtsubg(g)) subgraphs.push_back(g);
        std::sort(subgraphs.begin(), subgraphs.end(),
                  [](Agraph_t* a, Agraph_t* b) { return AGSEQ(a) < AGSEQ(b); });
        return subgraphs;
    }

    // Outer clusters come ahead of inner ones. A subgraph that is none passes what is in it on to
    // the cluster around it.
    void read_clusters(int owner) {
        struct Open {
            Agraph_t* graph;
            int owner;
        };
        std::vector<Open> open{{root_, owner}};
        while (!open.empty()) {
            const Open next = open.back();
            open.pop_back();
            int place = next.owner;
            if (next.graph != root_ && name_of(next.graph).rfind("cluster", 0) == 0) {
                place = add_cluster(next.graph, next.owner);
            }
            const std::vector<Agraph_t*> subgraphs = subgraphs_of(next.graph);
            for (auto it = subgraphs.rbegin(); it != subgraphs.rend(); ++it) {
                open.push_back({*it, place});
            }
        }
    }

    int add_cluster(Agraph_t* cluster, int owner) {
        const std::string name = name_of(cluster);
        FileNode made;
        made.name = name.substr(std::min(name.find_first_not_of('_', 7), name.size()));
        made.caption = has_own(cluster, "label") ? label_of_graph(cluster) : name;
        made.owner = owner;
        made.look = look_of(cluster, of_graphs_);
        const int place = file_.AddNode(std::move(made));
        clusters_.emplace(name, place);
        for (Agnode_t* node = agfstnode(cluster); node; node = agnxtnode(cluster, node)) {
            int& owner_of_node = file_.nodes[static_cast<std::size_t>(places_[node])].owner;
            if (owner_of_node == owner) {
                owner_of_node = place;
            } else {
                shared_.emplace(node, place);
            }
        }
        return place;
    }

    void read_edges() {
        std::vector<Agedge_t*> edges;
        for (Agnode_t* node = agfstnode(root_); node != nullptr; node = agnxtnode(root_, node)) {
            for (Agedge_t* e = agfstout(root_, node); e != nullptr; e = agnxtout(root_, e)) {
                edges.push_back(e);
            }
        }
        std::sort(edges.begin(), edges.end(),
                  [](Agedge_t* a, Agedge_t* b) { return AGSEQ(a) < AGSEQ(b); });
        for (Agedge_t* edge : edges) read_edge(edge);
    }

    void read_edge(Agedge_t* edge) {
        FileEdge made;
        made.from = end_of(edge, agtail(edge), of_edges_.tail);
        made.to = end_of(edge, aghead(edge), of_edges_.head);
        LabelNames names = names_;
        names.tail = name_of(agtail(edge));
        names.head = name_of(aghead(edge));
        names.edge = names.tail + (agisdirected(root_) != 0 ? "->" : "--") + names.head;
        made.caption = label_of(edge, of_edges_.label, "", names);
        made.look.line = color_of(text_of(edge, of_edges_.color));
        made.look.pen_width = pen_width_of(text_of(edge, of_edges_.pen_width));
        if (*value_of(edge, of_edges_.style) != '\0') losses_.AddAttribute("style");
        file_.edges.push_back(std::move(made));
    }

    // The node, or the cluster that the edge names in its place.
    int end_of(Agedge_t* edge, Agnode_t* node, Agsym_t* attribute) {
        const std::string cluster = text_of(edge, attribute);
        if (!cluster.empty()) {
            const auto found = clusters_.find(cluster);
            if (found != clusters_.end()) return found->second;
            ++lost_ends_;
        }
        return places_[node];
    }

    void note_attributes() {
        constexpr std::array<const char*, 6> kOfAll = {"label",     "style",    "color",
                                                       "fillcolor", "penwidth", "fontcolor"};
        constexpr std::array<const char*, 5> kOfSome = {"charset", "compound", "lhead", "ltail",
                                                        "key"};
        for (const int kind : {AGRAPH, AGNODE, AGEDGE}) {
            for (Agsym_t* a = agnxtattr(root_, kind, nullptr); a; a = agnxtattr(root_, kind, a)) {
                const std::string name = a->name;
                const bool is_known =
                    std::find(kOfAll.begin(), kOfAll.end(), name) != kOfAll.end() ||
                    std::find(kOfSome.begin(), kOfSome.end(), name) != kOfSome.end();
                const bool is_for_edges = name != "fillcolor" && name != "fontcolor";
                if (!is_known || (kind == AGEDGE && !is_for_edges)) losses_.AddAttribute(name);
            }
        }
    }

    Agraph_t* root_;
    FileGraph& file_;
    Losses& losses_;
    Attributes of_graphs_;
    Attributes of_nodes_;
    Attributes of_edges_;
    LabelNames names_;
    bool is_latin1_ = false;
    std::unordered_map<Agnode_t*, int> places_;
    std::unordered_map<std::string, int> clusters_;
    // Nodes that stand in several clusters.
    std::unordered_map<Agnode_t*, int> shared_;
    int lost_ends_ = 0;
};

}  // namespace

FileGraph ReadDot(const std::string& name, std::string_view text, Losses& losses) {
    const ParsedDot parsed(name, text);
    FileGraph file;
    const std::vector<Agraph_t*> graphs = parsed.graphs();
    for (Agraph_t* graph : graphs) {
        GraphReader(graph, file, losses).Read(graphs.size() == 1);
    }
    if (!parsed.warning().empty()) losses.AddRemark(parsed.warning());
    return file;
}

}  // namespace nodeline::formats

#else

namespace nodeline::formats {

FileGraph ReadDot(const std::string& name, std::string_view /*text*/, Losses& /*losses*/) {
    throw ReadError(name, 0, "this build reads no DOT files");
}

}  // namespace nodeline::formats

#endif
