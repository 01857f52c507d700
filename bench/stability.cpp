// Takes graphs through random changes and writes their pictures, a line of JSON for each state.
//
//   bench-stability examples/graphs > states.jsonl
//   bench-stability examples/graphs "nested 100"       only the graph of that name
//   bench-stability examples/graphs "nested 100" 20    with 20 changes of each kind, not 4
//
// A line tells the set, the graph, the number of the state (0 before the first change), the kind of
// the change that led to it, and what is visible: for each node its number, its owner (-1 for the
// root) and the size of its caption's box, and for each edge its ends. "pictures" has the boxes of
// these nodes (left, top, width, height), in the same order, for each keeper of the picture; "ms"
// has the processor time that each took over the change and its picture.
#include <bench/stability_changes.h>
#include <bench/stopwatch.h>
#include <paintcore/number_text.h>

#include <charconv>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace nodeline::bench {

namespace {

// A graph in the hands of one keeper.
struct Sitter {
    std::unique_ptr<Subject> subject;
    double ms = 0.0;  // that the last change took

    // Carries out what is to be timed.
    template <class Act>
    void Time(Act act) {
        const Stopwatch watch;
        act();
        ms = 1e3 * watch.Seconds();
    }
};
using Sitters = std::vector<Sitter>;

// Puts a list in brackets, with what `write` makes of each entry.
template <class Entries, class Write>
std::string list_of(const Entries& entries, Write write) {
    std::string text = "[";
    for (const auto& entry : entries) {
        if (text.size() > 1) text += ",";
        text += write(entry);
    }
    return text + "]";
}

std::string numbers(const std::vector<double>& values) {
    return list_of(values, [](double value) { return paintcore::NumberText(value); });
}

std::vector<int> visible_nodes(const Subject& subject) {
    std::vector<int> visible;
    for (int number = 0; number < subject.node_count(); ++number) {
        if (subject.IsVisible(number)) visible.push_back(number);
    }
    return visible;
}

std::string nodes_of(const Subject& subject, const std::vector<int>& visible) {
    return list_of(visible, [&](int number) {
        const nodeline::size<double> own = subject.OwnSizeOf(number);
        const int owner = Subject::NumberOf(subject.NodeAt(number).GetOwner());
        return numbers({static_cast<double>(number), static_cast<double>(owner), own.cx, own.cy});
    });
}

std::string edges_of(const Subject& subject, const std::vector<int>& visible) {
    std::vector<PlannedEdge> edges;
    for (const int number : visible) {
        for (const Edge& edge : subject.NodeAt(number).GetEdgesOut()) {
            const int to = Subject::NumberOf(edge.To());
            if (subject.IsVisible(to)) edges.push_back({number, to});
        }
    }
    return list_of(edges, [](const PlannedEdge& edge) {
        return numbers({static_cast<double>(edge.from), static_cast<double>(edge.to)});
    });
}

std::string boxes_of(const Subject& subject, const std::vector<int>& visible) {
    return list_of(visible, [&](int number) {
        const rectangle<double> box = subject.BoxOf(number);
        return numbers({box.left, box.top, box.right - box.left, box.bottom - box.top});
    });
}

// What `write` makes of each sitter, by the name of its keeper.
template <class Write>
std::string by_keeper(const Sitters& sitters, Write write) {
    std::string text = "{";
    for (std::size_t i = 0; i < sitters.size(); ++i) {
        if (i > 0) text += ",";
        text += "\"" + std::string(Keepers()[i].name) + "\":" + write(sitters[i]);
    }
    return text + "}";
}

void write_state(const WatchedGraph& watched, int state, std::string_view change,
                 const Sitters& sitters) {
    // What is visible does not depend on who keeps the picture.
    const Subject& first = *sitters.front().subject;
    const std::vector<int> visible = visible_nodes(first);
    std::string line = "{\"set\":\"" + watched.set + "\",\"graph\":\"" + watched.name + "\"";
    line += ",\"state\":" + std::to_string(state) + ",\"change\":\"" + std::string(change) + "\"";
    line += ",\"nodes\":" + nodes_of(first, visible);
    line += ",\"edges\":" + edges_of(first, visible);
    line += ",\"pictures\":" + by_keeper(sitters, [&](const Sitter& sitter) {
                return boxes_of(*sitter.subject, visible);
            });
    line += ",\"ms\":" + by_keeper(sitters, [](const Sitter& sitter) {
                return paintcore::NumberText(sitter.ms);
            });
    std::printf("%s}\n", line.c_str());
}

void watch(const WatchedGraph& watched, int rounds) {
    Sitters sitters;
    for (const Keeper& keeper : Keepers()) {
        Sitter& sitter = sitters.emplace_back();
        sitter.Time([&] { sitter.subject = std::make_unique<Subject>(watched, keeper); });
    }
    int state = 0;
    write_state(watched, state++, "", sitters);
    Changer changer(watched.seed);
    for (int round = 0; round < rounds; ++round) {
        for (const ChangeKind kind : changer.NextRound()) {
            const auto change = changer.Choose(kind, *sitters.front().subject);
            if (!change) continue;
            for (Sitter& sitter : sitters) sitter.Time([&] { sitter.subject->Apply(*change); });
            write_state(watched, state++, NameOf(kind), sitters);
        }
    }
}

int answer(const std::vector<std::string>& words) {
    int rounds = 4;
    bool understood = !words.empty() && words.size() <= 3;
    if (words.size() == 3) {
        const char* end = words[2].data() + words[2].size();
        understood = std::from_chars(words[2].data(), end, rounds).ptr == end && rounds > 0;
    }
    if (!understood) {
        std::fprintf(stderr, "usage: bench-stability FOLDER [GRAPH [ROUNDS]]\n");
        return 2;
    }
    std::vector<WatchedGraph> graphs = GeneratedGraphs();
    const std::string trouble = AddRealGraphs(words[0], graphs);
    if (!trouble.empty()) {
        std::fprintf(stderr, "%s\n", trouble.c_str());
        return 1;
    }
    for (const WatchedGraph& watched : graphs) {
        if (words.size() == 1 || words[1] == watched.name) watch(watched, rounds);
    }
    return 0;
}

}  // namespace

}  // namespace nodeline::bench

int main(int argc, char** argv) { return nodeline::bench::answer({argv + 1, argv + argc}); }
