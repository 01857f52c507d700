#include <formats/read_error.h>
#include <formats/writer.h>
#include <formats/writers.h>

namespace nodeline::formats {

namespace {

std::string write(const GraphListing& listing, Format format, Losses& losses) {
    switch (format) {
        case Format::kDot:
            return WriteDot(listing, losses);
        case Format::kGraphml:
            return WriteGraphml(listing, losses);
        case Format::kJson:
            return WriteJson(listing, losses);
        case Format::kText:
            break;
    }
    return WriteText(listing, losses);
}

}  // namespace

WrittenGraph WriteGraph(const graph_ptr2<Graph>& graph, const std::string& name, Format format,
                        const GraphLooks& looks) {
    WrittenGraph written;
    Losses losses;
    written.text = write(GraphListing(graph, looks), format, losses);
    const std::string lost = losses.Describe();
    if (!lost.empty()) written.warnings.push_back(Message(name, 0, "warning: " + lost));
    return written;
}

}  // namespace nodeline::formats
