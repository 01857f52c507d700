#include <formats/colors.h>
#include <formats/writers.h>

#include <nlohmann/json.hpp>

namespace nodeline::formats {

namespace {

using Json = nlohmann::ordered_json;

std::string caption_of(const std::string& caption, int& replaced) {
    return Replaced(
        caption, [](char32_t) { return true; }, replaced);
}

template <class Value>
void put_color(Json& metadata, const char* key, const Value& color) {
    if (color) metadata[key] = FormatColor(*color);
}

Json describe(const NodeLook& look) {
    Json metadata = Json::object();
    put_color(metadata, "fillcolor", look.fill);
    put_color(metadata, "color", look.border);
    put_color(metadata, "fontcolor", look.text);
    if (look.pen_width) metadata["penwidth"] = *look.pen_width;
    return metadata;
}

Json describe(const EdgeLook& look) {
    Json metadata = Json::object();
    put_color(metadata, "color", look.line);
    if (look.pen_width) metadata["penwidth"] = *look.pen_width;
    return metadata;
}

}  // namespace

// One line per node and edge, without a tree of the whole in memory.
std::string WriteJson(const GraphListing& listing, Losses& losses) {
    int replaced = 0;
    std::string text = "{\"graph\":{\"directed\":true,\n\"nodes\":{";
    const char* separator = "\n";
    for (const Node& node : listing.nodes()) {
        Json json = {{"label", caption_of(node.GetCaption(), replaced)}};
        Json metadata = describe(listing.LookOf(node));
        const std::string owner = listing.IdOf(node.GetOwner());
        if (owner != "0") metadata["owner"] = owner;
        if (!metadata.empty()) json["metadata"] = metadata;
        text += separator + ("\"" + listing.IdOf(node) + "\":") + json.dump();
        separator = ",\n";
    }
    text += "},\n\"edges\":[";
    separator = "\n";
    for (const Edge& edge : listing.edges()) {
        Json json = {{"source", listing.IdOf(edge.From())}, {"target", listing.IdOf(edge.To())}};
        if (!edge.GetCaption().empty()) json["label"] = caption_of(edge.GetCaption(), replaced);
        const Json metadata = describe(listing.LookOf(edge));
        if (!metadata.empty()) json["metadata"] = metadata;
        text += separator + json.dump();
        separator = ",\n";
    }
    losses.AddCount(replaced, "caption", "with bytes that are no UTF-8, replaced");
    return text + "]}}\n";
}

}  // namespace nodeline::formats
