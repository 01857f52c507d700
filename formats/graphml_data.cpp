#include <formats/graphml_data.h>

#ifdef NODELINE_WITH_GRAPHML

#include <formats/colors.h>

#include <algorithm>
#include <array>
#include <cstddef>
#include <utility>

namespace nodeline::formats {

namespace {

// The words for a caption, the best first. The label of a drawn shape is better than all of them.
constexpr std::array<std::string_view, 6> kCaptions = {"label", "caption",     "name",
                                                       "title", "description", "d"};
constexpr int kShapeRank = -1;
constexpr int kDescriptionRank = static_cast<int>(kCaptions.size());

std::string in_small_letters(std::string text) {
    for (char& c : text) c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    return text;
}

std::string trimmed(const std::string& text) {
    constexpr const char* kBlanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// All text that stands directly in an element.
std::string text_in(const pugi::xml_node& element) {
    std::string text;
    for (const pugi::xml_node& child : element.children()) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
            text += child.value();
        }
    }
    return text;
}

pugi::xml_node first_element_in(const pugi::xml_node& parent) {
    return parent.find_child(
        [](const pugi::xml_node& child) { return child.type() == pugi::node_element; });
}

std::optional<int> rank_of(const std::string& name) {
    const auto* found = std::find(kCaptions.begin(), kCaptions.end(), name);
    if (found == kCaptions.end()) return std::nullopt;
    return static_cast<int>(found - kCaptions.begin());
}

}  // namespace

std::string_view LocalName(const pugi::xml_node& element) {
    const std::string_view name = element.name();
    const std::size_t colon = name.find(':');
    return colon == std::string_view::npos ? name : name.substr(colon + 1);
}

void GraphmlKeys::Add(const pugi::xml_node& key) {
    Key made;
    const std::string id = key.attribute("id").value();
    made.name = key.attribute("attr.name").value();
    if (made.name.empty()) made.name = id;
    made.domain = key.attribute("for").as_string("all");
    for (const pugi::xml_node& child : key.children()) {
        if (LocalName(child) == "default") made.usual = text_in(child);
    }
    const bool has_usual = made.usual.has_value();
    if (keys_.emplace(id, std::move(made)).second && has_usual) usual_.push_back(id);
}

GraphmlData GraphmlKeys::Read(const pugi::xml_node& element, std::string_view kind) {
    Reading reading;
    for (const std::string& id : usual_) {
        const Key& key = keys_.at(id);
        if (key.domain == kind || key.domain == "all") take(key.name, *key.usual, reading);
    }
    for (const pugi::xml_node& child : element.children()) {
        const std::string_view name = LocalName(child);
        if (name == "desc") take_caption(kDescriptionRank, text_in(child), reading);
        if (name == "port") losses_.AddAttribute("port");
        if (name != "data") continue;
        const std::string id = child.attribute("key").value();
        const auto key = keys_.find(id);
        if (const pugi::xml_node graphics = first_element_in(child)) {
            take_graphics(graphics, reading);
        } else {
            take(key != keys_.end() ? key->second.name : id, text_in(child), reading);
        }
    }
    return std::move(reading.data);
}

void GraphmlKeys::take(const std::string& name, const std::string& value, Reading& reading) {
    const std::string word = in_small_letters(name);
    NodeLook& look = reading.data.look;
    if (const std::optional<int> rank = rank_of(word)) {
        take_caption(*rank, value, reading);
    } else if (word == "fillcolor") {
        look.fill = color_of(value);
    } else if (word == "color") {
        look.border = color_of(value);
    } else if (word == "fontcolor") {
        look.text = color_of(value);
    } else if (word == "penwidth") {
        look.pen_width = ParsePenWidth(value);
    } else {
        losses_.AddAttribute(name);
    }
}

void GraphmlKeys::take_caption(int rank, const std::string& value, Reading& reading) {
    if (rank > reading.caption_rank) return;
    reading.caption_rank = rank;
    reading.data.caption = value;
}

// The graphics of an editor: a shape with parts, or several of which the first counts.
void GraphmlKeys::take_graphics(const pugi::xml_node& graphics, Reading& reading) {
    pugi::xml_node shape = graphics;
    while (LocalName(shape) == "ProxyAutoBoundsNode" || LocalName(shape) == "Realizers") {
        const pugi::xml_node inner = first_element_in(shape);
        if (!inner) break;
        shape = inner;
    }
    for (const pugi::xml_node& part : shape.children()) {
        if (part.type() == pugi::node_element) take_part(part, reading);
    }
}

void GraphmlKeys::take_part(const pugi::xml_node& part, Reading& reading) {
    const std::string_view name = LocalName(part);
    NodeLook& look = reading.data.look;
    const bool has_color = part.attribute("hasColor").as_bool(true);
    if (name == "NodeLabel" || name == "EdgeLabel") {
        const std::string label = trimmed(text_in(part));
        if (label.empty() || reading.caption_rank == kShapeRank) return;
        take_caption(kShapeRank, label, reading);
        look.text = color_of(part.attribute("textColor").value());
    } else if (name == "Fill") {
        const bool shows = has_color && !part.attribute("transparent").as_bool(false);
        if (shows) look.fill = color_of(part.attribute("color").value());
    } else if (name == "BorderStyle" || name == "LineStyle") {
        if (has_color) look.border = color_of(part.attribute("color").value());
        look.pen_width = ParsePenWidth(part.attribute("width").value());
    } else {
        losses_.AddAttribute(part.name());
    }
}

std::optional<paintcore::_color> GraphmlKeys::color_of(const std::string& text) {
    if (text.empty()) return std::nullopt;
    const auto color = ParseColor(text);
    if (!color) losses_.AddColor(text);
    return color;
}

}  // namespace nodeline::formats

#endif
