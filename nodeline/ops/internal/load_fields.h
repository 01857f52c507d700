// The fields of a line of a graph file.
#pragma once

#include <string_view>

namespace nodeline::internal {

// Reads integers one after the other as a stream extracts them, without its cost and its locale.
class IntReader {
public:
    explicit IntReader(std::string_view text) : rest_(text) {}

    // The next integer. As with a stream, the first failure is the last read that does anything: a
    // text that is no number gives 0, a number beyond `int` gives the nearest `int`, and where the
    // text has ended `value` stays as it is.
    void Read(int& value);

    // Whether a number beyond `int` was met.
    [[nodiscard]] bool is_out_of_range() const { return is_out_of_range_; }

private:
    std::string_view rest_;
    bool is_good_ = true;
    bool is_out_of_range_ = false;
};

// A line of the sections for nodes and clusters. An id of -1 declares no node.
struct NodeLine {
    explicit NodeLine(std::string_view line);

    int id = -1;
    int owner = -1;
    std::string_view caption;
    bool is_out_of_range = false;
};

// A line of the section for edges. A source of -1 declares no edge.
struct EdgeLine {
    explicit EdgeLine(std::string_view line);

    int from = -1;
    int to = -1;
    std::string_view caption;
    bool is_out_of_range = false;
};

}  // namespace nodeline::internal
