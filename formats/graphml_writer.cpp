#include <formats/colors.h>
#include <formats/writers.h>

namespace nodeline::formats {

namespace {

constexpr const char* kHead =
    "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
    "<graphml xmlns=\"http://graphml.graphdrawing.org/xmlns\">\n"
    "<key id=\"label\" for=\"all\" attr.name=\"label\" attr.type=\"string\"/>\n";
constexpr const char* kLookKeys =
    "<key id=\"fillcolor\" for=\"node\" attr.name=\"fillcolor\" attr.type=\"string\"/>\n"
    "<key id=\"color\" for=\"all\" attr.name=\"color\" attr.type=\"string\"/>\n"
    "<key id=\"fontcolor\" for=\"node\" attr.name=\"fontcolor\" attr.type=\"string\"/>\n"
    "<key id=\"penwidth\" for=\"all\" attr.name=\"penwidth\" attr.type=\"double\"/>\n";

bool is_xml(char32_t c) {
    if (c < 0x20) return c == '\t' || c == '\n' || c == '\r';
    return c != 0xFFFE && c != 0xFFFF;
}

std::string escaped(const std::string& text, int& replaced) {
    std::string result;
    for (const char c : Replaced(text, &is_xml, replaced)) {
        if (c == '&') {
            result += "&amp;";
        } else if (c == '<') {
            result += "&lt;";
        } else if (c == '>') {
            result += "&gt;";
        } else if (c == '\r') {
            result += "&#13;";
        } else {
            result += c;
        }
    }
    return result;
}

std::string data(const char* key, const std::string& value) {
    return std::string("<data key=\"") + key + "\">" + value + "</data>";
}

template <class Value>
std::string color_data(const char* key, const Value& color) {
    return color ? data(key, FormatColor(*color)) : std::string();
}

template <class Value>
std::string width_data(const Value& width) {
    return width ? data("penwidth", FormatNumber(*width)) : std::string();
}

}  // namespace

std::string WriteGraphml(const GraphListing& listing, Losses& losses) {
    int replaced = 0;
    std::string text = kHead;
    if (!listing.looks().IsEmpty()) text += kLookKeys;
    text += "<graph edgedefault=\"directed\">\n";
    const auto open = [&](const Node& node) {
        const NodeLook& look = listing.LookOf(node);
        text += "<node id=\"" + listing.IdOf(node) + "\">" +
                data("label", escaped(node.GetCaption(), replaced)) +
                color_data("fillcolor", look.fill) + color_data("color", look.border) +
                color_data("fontcolor", look.text) + width_data(look.pen_width);
        text += IsOwner(node) ? "<graph edgedefault=\"directed\">\n" : "</node>\n";
    };
    listing.Walk(open, [&](const Node&) { text += "</graph></node>\n"; });
    for (const Edge& edge : listing.edges()) {
        const EdgeLook& look = listing.LookOf(edge);
        text += "<edge source=\"" + listing.IdOf(edge.From()) + "\" target=\"" +
                listing.IdOf(edge.To()) + "\">";
        if (!edge.GetCaption().empty()) {
            text += data("label", escaped(edge.GetCaption(), replaced));
        }
        text += color_data("color", look.line) + width_data(look.pen_width) + "</edge>\n";
    }
    losses.AddCount(replaced, "caption", "with characters that XML cannot hold, replaced");
    return text + "</graph>\n</graphml>\n";
}

}  // namespace nodeline::formats
