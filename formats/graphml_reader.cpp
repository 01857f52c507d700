#include <formats/graphml_reader.h>

#ifdef NODELINE_WITH_GRAPHML

#include <formats/graphml_data.h>

#include <pugixml.hpp>

#include <cstddef>
#include <unordered_map>
#include <utility>
#include <vector>

namespace nodeline::formats {

namespace {

class GraphmlReader {
public:
    GraphmlReader(const std::string& name, std::string_view text, Losses& losses)
        : name_(name), text_(text), losses_(losses), keys_(losses) {}

    FileGraph Read() {
        const pugi::xml_parse_result result = document_.load_buffer(
            text_.data(), text_.size(), pugi::parse_default | pugi::parse_ws_pcdata_single);
        if (!result) {
            const auto offset = static_cast<std::size_t>(result.offset);
            throw ReadError(name_, LineAt(text_, offset), result.description());
        }
        const pugi::xml_node root = document_.document_element();
        if (LocalName(root) != "graphml") {
            throw ReadError(name_, line_of(root), "the outermost element is not <graphml>");
        }
        read_document(root);
        return std::move(file_);
    }

private:
    // Offsets are those of names inside the text.
    [[nodiscard]] int line_of(const pugi::xml_node& element) const {
        const std::ptrdiff_t offset = element.offset_debug();
        return offset < 0 ? 0 : LineAt(text_, static_cast<std::size_t>(offset));
    }

    [[noreturn]] void refuse(const pugi::xml_node& element, const std::string& reason) const {
        throw ReadError(name_, line_of(element), reason);
    }

    void read_document(const pugi::xml_node& root) {
        std::vector<pugi::xml_node> graphs;
        for (const pugi::xml_node& child : root.children()) {
            if (LocalName(child) == "key") keys_.Add(child);
            if (LocalName(child) == "graph") graphs.push_back(child);
        }
        if (graphs.empty()) refuse(root, "there is no <graph> in the file");
        for (const pugi::xml_node& graph : graphs) {
            const GraphmlData data = keys_.Read(graph, "graph");
            int owner = FileGraph::kRoot;
            if (graphs.size() > 1) {
                const std::string id = graph.attribute("id").value();
                owner = file_.AddNode({id, data.caption.value_or(id), owner, data.look});
            }
            read_graph(graph, owner);
        }
        for (const pugi::xml_node& edge : edges_) read_edge(edge);
    }

    // Nested graphs are entered where they stand, without a call for each level.
    void read_graph(const pugi::xml_node& graph, int owner) {
        struct Level {
            pugi::xml_node next;
            int owner;
        };
        std::vector<Level> levels{{graph.first_child(), owner}};
        while (!levels.empty()) {
            const Level level = levels.back();
            if (!level.next) {
                levels.pop_back();
                continue;
            }
            levels.back().next = level.next.next_sibling();
            const std::string_view name = LocalName(level.next);
            if (name == "node") {
                const int place = read_node(level.next, level.owner);
                for (auto child = level.next.last_child(); child;
                     child = child.previous_sibling()) {
                    if (LocalName(child) == "graph") levels.push_back({child.first_child(), place});
                }
            } else if (name == "edge") {
                edges_.push_back(level.next);
            } else if (name == "hyperedge") {
                losses_.AddAttribute("hyperedge");
            }
        }
    }

    int read_node(const pugi::xml_node& node, int owner) {
        const pugi::xml_attribute id = node.attribute("id");
        if (!id) refuse(node, "a node has no id");
        const GraphmlData data = keys_.Read(node, "node");
        FileNode made;
        made.name = id.value();
        made.caption = data.caption.value_or(made.name);
        made.owner = owner;
        made.look = data.look;
        if (!places_.emplace(made.name, file_.CountNodes()).second) {
            refuse(node, "the node \"" + Quote(made.name) + "\" is declared above");
        }
        return file_.AddNode(std::move(made));
    }

    void read_edge(const pugi::xml_node& edge) {
        const GraphmlData data = keys_.Read(edge, "edge");
        FileEdge made;
        made.from = end_of(edge, "source");
        made.to = end_of(edge, "target");
        made.caption = data.caption.value_or("");
        made.look.line = data.look.border;
        made.look.pen_width = data.look.pen_width;
        if (edge.attribute("sourceport") || edge.attribute("targetport")) {
            losses_.AddAttribute("port");
        }
        file_.edges.push_back(std::move(made));
    }

    int end_of(const pugi::xml_node& edge, const char* end) {
        const pugi::xml_attribute id = edge.attribute(end);
        if (!id) refuse(edge, std::string("an edge has no ") + end);
        const auto found = places_.find(id.value());
        if (found == places_.end()) {
            refuse(edge,
                   "an edge names the node \"" + Quote(id.value()) + "\", which is not declared");
        }
        return found->second;
    }

    const std::string& name_;
    std::string_view text_;
    Losses& losses_;
    pugi::xml_document document_;
    GraphmlKeys keys_;
    FileGraph file_;
    std::unordered_map<std::string, int> places_;
    std::vector<pugi::xml_node> edges_;
};

}  // namespace

FileGraph ReadGraphml(const std::string& name, std::string_view text, Losses& losses) {
    return GraphmlReader(name, text, losses).Read();
}

}  // namespace nodeline::formats

#else

namespace nodeline::formats {

FileGraph ReadGraphml(const std::string& name, std::string_view /*text*/, Losses& /*losses*/) {
    throw ReadError(name, 0, "this build reads no GraphML files");
}

}  // namespace nodeline::formats

#endif
