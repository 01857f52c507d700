#include <formats/colors.h>
#include <formats/writers.h>
#include <paintcore/utf8.h>

#include <algorithm>
#include <optional>

namespace nodeline::formats {

namespace {

// Escapes and entities are what labels hold besides their text. A byte of the value 0 would end it.
std::string label_of(const std::string& caption, int& zeros) {
    std::string text = "\"";
    bool has_zero = false;
    for (const char c : caption) {
        if (c == '"' || c == '\\') {
            text += '\\';
            text += c;
        } else if (c == '\n') {
            text += "\\n";
        } else if (c == '&') {
            text += "&amp;";
        } else if (c == '\0') {
            paintcore::AppendCodePoint(text, paintcore::kReplacementCharacter);
            has_zero = true;
        } else {
            text += c;
        }
    }
    zeros += has_zero ? 1 : 0;
    return text + "\"";
}

std::string color_of(const std::optional<paintcore::_color>& color) {
    return color ? "\"" + FormatColor(*color) + "\"" : "\"\"";
}

std::string cluster_of(const std::string& id) { return "\"cluster_" + id + "\""; }

class DotWriter {
public:
    explicit DotWriter(const GraphListing& listing) : listing_(listing) {
        const auto& nodes = listing.nodes();
        has_cluster_looks_ = std::any_of(nodes.begin(), nodes.end(), [&](const Node& node) {
            return IsOwner(node) && !listing.LookOf(node).IsPlain();
        });
    }

    std::string Write(Losses& losses) {
        text_ = "digraph {\n";
        const auto& edges = listing_.edges();
        const bool is_compound = std::any_of(edges.begin(), edges.end(), [](const Edge& edge) {
            return IsOwner(edge.From()) || IsOwner(edge.To());
        });
        if (is_compound) text_ += "    compound=true;\n";
        listing_.Walk(
            [this](const Node& node) { IsOwner(node) ? open_cluster(node) : write_node(node); },
            [this](const Node&) {
                --depth_;
                start_line();
                text_ += "}\n";
            });
        for (const Edge& edge : edges) write_edge(edge);
        losses.AddCount(zeros_, "caption", "with bytes of the value 0, replaced");
        return text_ + "}\n";
    }

private:
    // Nesting that goes on and on is no reason to fill lines with blanks.
    void start_line() {
        constexpr int kDeepestIndent = 20;
        text_.append(static_cast<std::size_t>(std::min(depth_, kDeepestIndent)) * 4, ' ');
    }

    void open_cluster(const Node& node) {
        start_line();
        text_ += "subgraph " + cluster_of(listing_.IdOf(node)) + " {\n";
        ++depth_;
        start_line();
        text_ += "graph [label=" + label_of(node.GetCaption(), zeros_);
        // Inner clusters take over from outer ones what they do not set.
        if (has_cluster_looks_) {
            const NodeLook& look = listing_.LookOf(node);
            text_ += look.fill ? " style=filled" : " style=\"\"";
            text_ += " fillcolor=" + color_of(look.fill) + " color=" + color_of(look.border) +
                     " fontcolor=" + color_of(look.text) + " penwidth=" +
                     (look.pen_width ? FormatNumber(*look.pen_width) : std::string("\"\""));
        }
        text_ += "];\n";
    }

    void write_node(const Node& node) {
        start_line();
        const NodeLook& look = listing_.LookOf(node);
        text_ += listing_.IdOf(node) + " [label=" + label_of(node.GetCaption(), zeros_);
        if (look.fill) text_ += " style=filled fillcolor=" + color_of(look.fill);
        if (look.border) text_ += " color=" + color_of(look.border);
        if (look.text) text_ += " fontcolor=" + color_of(look.text);
        if (look.pen_width) text_ += " penwidth=" + FormatNumber(*look.pen_width);
        text_ += "];\n";
    }

    // Edges join nodes alone. One that ends at a cluster ends at a node in it, and says so.
    [[nodiscard]] std::string end_of(Node node) const {
        while (IsOwner(node)) node = node.GetOwned().GetItem(0);
        return listing_.IdOf(node);
    }

    void write_edge(const Edge& edge) {
        const EdgeLook& look = listing_.LookOf(edge);
        std::string attributes;
        const auto add = [&](const std::string& attribute) {
            attributes += (attributes.empty() ? "" : " ") + attribute;
        };
        if (!edge.GetCaption().empty()) add("label=" + label_of(edge.GetCaption(), zeros_));
        if (look.line) add("color=" + color_of(look.line));
        if (look.pen_width) add("penwidth=" + FormatNumber(*look.pen_width));
        if (IsOwner(edge.From())) add("ltail=" + cluster_of(listing_.IdOf(edge.From())));
        if (IsOwner(edge.To())) add("lhead=" + cluster_of(listing_.IdOf(edge.To())));
        start_line();
        text_ += end_of(edge.From()) + " -> " + end_of(edge.To());
        text_ += attributes.empty() ? ";\n" : " [" + attributes + "];\n";
    }

    const GraphListing& listing_;
    bool has_cluster_looks_ = false;
    std::string text_;
    int depth_ = 1;
    int zeros_ = 0;
};

}  // namespace

std::string WriteDot(const GraphListing& listing, Losses& losses) {
    return DotWriter(listing).Write(losses);
}

}  // namespace nodeline::formats
