#include <load/loaded_graph.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <random>
#include <set>

namespace nodeline {
namespace {

// The loader told step by step, without regard to cost: a stream for every number, one `SetOwner`
// after the other, a walk down for every thread. It gives up where a node owns itself.
class PlainLoad {
public:
    PlainLoad(graph_ptr2<Graph> graph, std::istream& in) : root_(graph->GetRoot()) {
        std::string line;
        std::getline(in, line);
        root_.Remove();
        is_loaded_ = read(in) && assign_owners();
        if (!is_loaded_) {
            root_.Remove();
            return;
        }
        if (!threads_.empty()) {
            ForEachNodeIn(root_, Hide, true, false);
            for (const Node& thread : threads_) show(thread);
        }
        ForEachNodeIn(root_, MarkOld, true, true);
    }

    [[nodiscard]] bool is_loaded() const { return is_loaded_; }
    [[nodiscard]] bool has_self_owner() const { return has_self_owner_; }

private:
    bool read(std::istream& in) {
        std::string section = "[types]";
        while (!in.eof()) {
            std::string line;
            std::getline(in, line);
            if (line == "[nodes]" || line == "[clusters]" || line == "[edges]" ||
                line == "[types]") {
                section = line;
            } else if (section == "[nodes]" || section == "[clusters]") {
                read_node(line);
            } else if (section == "[edges]" && !read_edge(line)) {
                return false;
            }
        }
        return true;
    }

    void read_node(const std::string& line) {
        const std::size_t first = line.find('"');
        const std::size_t last = line.rfind('"');
        int id = -1;
        int type = -1;
        int owner = -1;
        std::istringstream(line.substr(0, first)) >> id;
        const std::string caption = line.substr(first + 1, last - first - 1);
        std::istringstream(line.substr(last + 1)) >> type >> owner;
        if (id == -1) return;
        Node node = root_.AddNode();
        node.SetCaption(caption);
        nodes_.emplace(id, node);
        owners_.emplace(id, owner);
        if (caption.find("Thread") != std::string::npos) threads_.push_back(node);
    }

    bool read_edge(const std::string& line) {
        const std::size_t first = line.find('"');
        const std::size_t last = line.rfind('"');
        int from = -1;
        int to = -1;
        std::istringstream(line.substr(0, first)) >> from >> to;
        if (from == -1) return true;
        if (nodes_.count(from) == 0 || nodes_.count(to) == 0) return false;
        nodes_[from].LinkTo(nodes_[to]).SetCaption(line.substr(first + 1, last - first - 1));
        return true;
    }

    bool assign_owners() {
        for (const auto& [id, owner] : owners_) {
            has_self_owner_ = has_self_owner_ || (id == owner && owner != 0);
        }
        if (has_self_owner_) return false;
        for (auto& [id, node] : nodes_) {
            const int owner = owners_[id];
            if (owner == 0) continue;
            if (nodes_.count(owner) == 0) return false;
            node.SetOwner(nodes_[owner]);
        }
        return true;
    }

    static void show(const Node& thread) {
        Show(thread);
        std::set<int> gone_on_with;
        for (NodeSet set = thread.GetChildren();;) {
            for (const Node& node : set) Show(node);
            Node next;
            for (const Node& node : set) {
                if (!next && node.GetCaption().find("main") != std::string::npos) next = node;
            }
            if (!next || !gone_on_with.insert(next.GetID()).second) return;
            set = next.GetChildren();
        }
    }

    Node root_;
    bool is_loaded_ = false;
    bool has_self_owner_ = false;
    std::map<int, Node> nodes_;
    std::map<int, int> owners_;
    std::vector<Node> threads_;
};

// Everything about a graph but the ids: nodes with their place, flags, and edges by node number.
std::string Describe(const graph_ptr2<Graph>& graph) {
    std::vector<Node> nodes;
    ForEachNodeIn(
        graph->GetRoot(), [&](const Node& node) { nodes.push_back(node); }, false, false);
    const int first =
        nodes.empty()
            ? 0
            : std::min_element(nodes.begin(), nodes.end(), [](const Node& a, const Node& b) {
                  return a.GetID() < b.GetID();
              })->GetID();
    std::string text;
    for (const Node& node : nodes) {
        text +=
            std::to_string(node.GetID() - first) + " in " +
            (IsRoot(node.GetOwner()) ? "root" : std::to_string(node.GetOwner().GetID() - first)) +
            " \"" + node.GetCaption() + "\" " + std::to_string(node.GetCondition()) + "\n";
        for (const Edge& edge : node.GetEdgesOut()) {
            text += "  to " + std::to_string(edge.To().GetID() - first) + " \"" +
                    edge.GetCaption() + "\"\n";
        }
    }
    return text;
}

class RandomFile {
public:
    explicit RandomFile(unsigned seed) : random_(seed) {}

    std::string Make() {
        std::string text = "title\n";
        const int sections = 1 + pick(4);
        for (int i = 0; i < sections; ++i) {
            const bool has_nodes = i == 0 || pick(2) == 0;
            text += has_nodes ? (pick(2) == 0 ? "[nodes]\n" : "[clusters]\n") : "[edges]\n";
            for (int n = pick(8); n > 0; --n)
                text += (has_nodes ? node_line() : edge_line()) + "\n";
            if (pick(6) == 0) text += "[types]\n7 \"skipped\" 0 0\n";
        }
        if (pick(3) == 0) text.pop_back();
        return text;
    }

private:
    int pick(int count) { return std::uniform_int_distribution<int>(0, count - 1)(random_); }

    std::string caption() {
        static const char* const kCaptions[] = {"",       "a",        "Thread 1", "main",
                                                "remain", "say \"hi", "x 1 2",    "thread"};
        return kCaptions[pick(8)];
    }

    // Mostly the id of one of few nodes.
    std::string id() {
        static const char* const kOdd[] = {"", "-1", "x", "+3", " 2 ", "007", "99999999999", "-4"};
        return pick(60) == 0 ? kOdd[pick(8)] : std::to_string(1 + pick(6));
    }

    std::string node_line() {
        const std::string own = id();
        std::string owner = pick(3) == 0 ? id() : "0";
        if (owner == own || pick(40) == 0) owner = "0";
        if (pick(30) == 0) return own + " 0 " + owner;
        return own + " \"" + caption() + "\" 0 " + owner;
    }

    std::string edge_line() {
        if (pick(30) == 0) return id() + " " + id();
        return id() + " " + id() + " \"" + caption() + "\"";
    }

    std::mt19937 random_;
};

TEST(Load, DoesWhatTheStepsSay) {
    int loaded_count = 0;
    int narrowed_count = 0;
    constexpr unsigned kFiles = 20000;
    for (unsigned seed = 0; seed < kFiles; ++seed) {
        const std::string text = RandomFile(seed).Make();
        const LoadedGraph loaded(text);
        const graph_ptr2<Graph> graph(new Graph, true);
        std::istringstream in(text);
        const PlainLoad plain(graph, in);
        if (plain.has_self_owner()) continue;
        ASSERT_EQ(loaded.is_loaded, plain.is_loaded()) << "seed " << seed << '\n' << text;
        ASSERT_EQ(Describe(loaded.graph), Describe(graph)) << "seed " << seed << '\n' << text;
        loaded_count += loaded.is_loaded ? 1 : 0;
        narrowed_count += loaded.is_loaded && Describe(graph).find("\" 1\n") != std::string::npos;
    }
    EXPECT_GT(loaded_count, 2000);
    EXPECT_GT(narrowed_count, 500);
}

}  // namespace
}  // namespace nodeline
