// Node search: the captions of a graph, ready to be looked through while somebody types.
//
//   NodeSearch search;
//   search.Collect(graph);
//   const NodeSearch::Result result = search.Find("parse", 1000);
#pragma once

#include <nodeline/model/graph.h>

#include <QString>
#include <cstddef>
#include <vector>

namespace nodeline::app {

// Holds handles on nodes, so it is cleared or collected anew when the graph goes or nodes of it are
// removed. Nodes that came and captions that changed since are found after the next `Collect`.
class NodeSearch {
public:
    // Numbers of nodes in this object, the best first, and how many there are in all.
    struct Result {
        std::vector<std::size_t> rows;
        std::size_t count = 0;
        std::size_t hidden_count = 0;
    };

    // Takes all nodes but the root; none of a null graph. O(n log n).
    void Collect(const graph_ptr2<Graph>& graph);
    // Reads anew which nodes are hidden; linear.
    void Refresh();

    // The nodes whose captions contain `text`, whatever the case: first those that start with it,
    // then the others, both by caption; all nodes if `text` is blank. At most `most` rows; all hits
    // are counted. Linear.
    [[nodiscard]] Result Find(const QString& text, std::size_t most) const;

    [[nodiscard]] std::size_t GetCount() const { return entries_.size(); }
    // Whether any node stands in another.
    [[nodiscard]] bool IsNested() const { return is_nested_; }

    [[nodiscard]] const Node& GetNode(std::size_t index) const { return entries_[index].node; }
    [[nodiscard]] const QString& GetCaption(std::size_t index) const;
    // The captions of the owners, from the outermost: "a › b". Empty right under the root.
    [[nodiscard]] QString GetPath(std::size_t index) const;
    // Whether the node or one of its owners is hidden.
    [[nodiscard]] bool IsHidden(std::size_t index) const { return entries_[index].is_hidden; }

private:
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    struct Entry {
        Node node;
        QString caption;
        QString folded;
        std::size_t owner = kNone;
        bool is_hidden = false;
    };

    // Owners ahead of what they own.
    std::vector<Entry> entries_;
    std::vector<std::size_t> by_caption_;
    bool is_nested_ = false;
};

}  // namespace nodeline::app
