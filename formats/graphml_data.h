// What the data of GraphML elements say about captions and looks.
#pragma once

#ifdef NODELINE_WITH_GRAPHML

#include <formats/looks.h>
#include <formats/losses.h>

#include <pugixml.hpp>

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace nodeline::formats {

// The name of an element without its prefix.
[[nodiscard]] std::string_view LocalName(const pugi::xml_node& element);

// What a node, an edge or a graph says of itself.
struct GraphmlData {
    // Nothing if there is no caption, which is not the same as an empty one.
    std::optional<std::string> caption;
    // Fill, border, text and pen of a node; the border and the pen are the line of an edge.
    NodeLook look;
};

// The keys that a file declares, by which its data are read.
class GraphmlKeys {
public:
    explicit GraphmlKeys(Losses& losses) : losses_(losses) {}

    // Takes a <key> element.
    void Add(const pugi::xml_node& key);

    // Reads the data of an element that is a "node", an "edge" or a "graph".
    [[nodiscard]] GraphmlData Read(const pugi::xml_node& element, std::string_view kind);

private:
    struct Key {
        std::string name;
        // "node", "edge", "graph" or "all".
        std::string domain;
        // The value of elements that give none.
        std::optional<std::string> usual;
    };
    struct Reading {
        GraphmlData data;
        // How good the caption is; the least number is the best.
        int caption_rank = 1000;
    };

    void take(const std::string& name, const std::string& value, Reading& reading);
    void take_caption(int rank, const std::string& value, Reading& reading);
    void take_graphics(const pugi::xml_node& graphics, Reading& reading);
    void take_part(const pugi::xml_node& part, Reading& reading);
    std::optional<paintcore::_color> color_of(const std::string& text);

    Losses& losses_;
    std::unordered_map<std::string, Key> keys_;
    // The keys with a usual value, in the order of the file.
    std::vector<std::string> usual_;
};

}  // namespace nodeline::formats

#endif
