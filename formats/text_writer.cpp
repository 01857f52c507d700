#include <formats/wording.h>
#include <formats/writers.h>

#include <algorithm>

namespace nodeline::formats {

namespace {

// A caption ends at the last quotation mark of its line, so marks may stand in it, but no line
// feed.
std::string quoted(std::string caption, int& broken) {
    if (caption.find('\n') != std::string::npos) {
        ++broken;
        std::replace(caption.begin(), caption.end(), '\n', ' ');
    }
    return "\"" + caption + "\"";
}

}  // namespace

std::string WriteText(const GraphListing& listing, Losses& losses) {
    int broken = 0;
    std::string text = Counted(listing.nodes().size(), "node") + ", " +
                       Counted(listing.edges().size(), "edge") + "\n[nodes]\n";
    for (const Node& node : listing.nodes()) {
        text += listing.IdOf(node) + " " + quoted(node.GetCaption(), broken) + " 0 " +
                listing.IdOf(node.GetOwner()) + "\n";
    }
    text += "[edges]\n";
    for (const Edge& edge : listing.edges()) {
        text += listing.IdOf(edge.From()) + " " + listing.IdOf(edge.To()) + " " +
                quoted(edge.GetCaption(), broken) + "\n";
    }
    losses.AddCount(broken, "caption", "with line feeds, written as blanks");
    losses.AddCount(static_cast<int>(listing.looks().nodes.size()), "node",
                    "without colours and pens");
    losses.AddCount(static_cast<int>(listing.looks().edges.size()), "edge",
                    "without colours and pens");
    return text;
}

}  // namespace nodeline::formats
