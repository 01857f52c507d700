// Draws a person's way through a call graph, with either layout: ten pictures each.
//
//   bench-session examples/graphs docs/pictures
//
// Reads lua-calls.txt from the first folder, and writes session-stable-01.png, session-inc-01.png
// and so on to the second one. The way begins at one file with all that it calls, as it does for
// someone who wants to know of that file; everything else is hidden, and comes as it is asked for.
#include <backends/cairo/measuring_painter.h>
#include <backends/cairo/picture.h>
#include <nodeline/handlers/handlers.h>
#include <nodeline/layout/inc_layout.h>
#include <nodeline/layout/stable_layout.h>
#include <nodeline/model/graph.h>
#include <nodeline/ops/graph_ops.h>
#include <nodeline/ops/load.h>
#include <nodeline/viewer/draw_functions.h>

#include <cstdio>
#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace nodeline::bench {

namespace {

constexpr double kScale = 1.0;

// A graph of functions in files, of which some are to be seen.
class View {
public:
    View(const graph_ptr2<Graph>& graph, const graph_ptr2<ILayout>& layout) : graph_(graph) {
        graph_->SetDefaultLayout(layout);
        const graph_ptr2<SimpleNodeHandler> handler(new SimpleNodeHandler, true);
        handler->SetIPainter(&measure_);
        graph_->SetDefaultNodeHandler(handler);
        const auto enter = [this](Node node) {
            nodes_.emplace(node.GetCaption(), node);
            Hide(node);
        };
        ForEachNodeIn(graph_->GetRoot(), enter, false, false);
    }

    // Shows a file with all of its functions, and what these call.
    void Open(const std::string& file) {
        for (const Node& function : at(file).GetOwned()) {
            show(function);
            for (const Node& callee : function.GetChildren()) show(callee);
        }
        ask_for_update();
    }

    void Unfold(const std::string& name, FoldDirection side) {
        ask_for_update();
        nodeline::Unfold(at(name), side);
        for (const Node& neighbour : neighbours(name, side)) show(neighbour);
    }

    // Files of which nothing is left to see go as well.
    void Fold(const std::string& name, FoldDirection side) {
        ask_for_update();
        nodeline::Fold(at(name), side);
        for (const Node& neighbour : neighbours(name, side)) hide_if_empty(neighbour.GetOwner());
    }

    void Remove(const std::string& name) {
        ask_for_update();
        Hide(at(name));
        hide_if_empty(at(name).GetOwner());
    }

    // Writes something behind the name of a function, so that its box gets wider.
    void Annotate(const std::string& name, const std::string& remark) {
        Node node = at(name);
        node.SetCaption(name + remark);
        node.ResizeSelf();
    }

    bool Save(const std::string& file) {
        graph_->RecalculateLayout(&measure_);
        MarkDrawnIn(graph_);
        std::string error;
        const auto picture = cairo::MakePicture(cairo::PictureFormat::kPng,
                                                graph_->GetRoot().GetSize(), kScale, &error);
        if (picture != nullptr) {
            picture->Draw(
                [this](paintcore::IPainter& painter) { DrawGraph(graph_, &painter, kScale); });
            if (picture->Save(file, &error)) return true;
        }
        std::fprintf(stderr, "%s\n", error.c_str());
        return false;
    }

private:
    Node at(const std::string& name) const { return nodes_.at(name); }

    NodeSet neighbours(const std::string& name, FoldDirection side) const {
        return side == FoldChildren ? at(name).GetChildren() : at(name).GetParents();
    }

    static void show(const Node& function) {
        Show(function);
        Show(function.GetOwner());
    }

    static void hide_if_empty(const Node& file) {
        for (const Node& function : file.GetOwned()) {
            if (!IsFlagSet(function, NodeHidden)) return;
        }
        Hide(file);
    }

    // Neighbours may stand in any file, so everything is to be brought up to date.
    void ask_for_update() { graph_->GetRoot().UpdateLayout(); }

    cairo::MeasuringPainter measure_;
    graph_ptr2<Graph> graph_;
    // By caption. A name that several files have stands for the first one.
    std::map<std::string, Node> nodes_;
};

using Step = void (*)(View&);
const std::vector<Step>& steps() {
    static const std::vector<Step> all = {
        [](View& view) { view.Open("lzio.c"); },
        [](View& view) { view.Unfold("luaZ_read", FoldParents); },
        [](View& view) { view.Unfold("loadBlock", FoldParents); },
        [](View& view) { view.Unfold("loadCode", FoldChildren); },
        [](View& view) { view.Fold("loadBlock", FoldParents); },
        [](View& view) { view.Unfold("luaZ_init", FoldParents); },
        [](View& view) { view.Unfold("loadBlock", FoldParents); },
        [](View& view) { view.Annotate("loadInt", ": 7 bits a byte"); },
        [](View& view) { view.Remove("checkliteral"); },
        [](View& view) { view.Fold("luaZ_init", FoldParents); },
    };
    return all;
}

bool draw_way(const std::string& file, const std::string& name, const graph_ptr2<ILayout>& layout,
              const std::string& folder) {
    const graph_ptr2<Graph> graph(new Graph, true);
    std::ifstream in(file);
    LoadError error;
    if (!Load(graph, in, &error)) {
        std::fprintf(stderr, "%s:%d: %s\n", file.c_str(), error.line, error.reason.c_str());
        return false;
    }
    View view(graph, layout);
    int number = 0;
    for (const Step step : steps()) {
        step(view);
        char ending[32];
        std::snprintf(ending, sizeof ending, "-%02d.png", ++number);
        if (!view.Save(folder + "/session-" + name + ending)) return false;
    }
    return true;
}

}  // namespace

}  // namespace nodeline::bench

int main(int argc, char** argv) {
    using namespace nodeline;
    if (argc != 3) {
        std::fprintf(stderr, "usage: bench-session GRAPHS PICTURES\n");
        return 2;
    }
    const std::string file = std::string(argv[1]) + "/lua-calls.txt";
    const bool drawn =
        bench::draw_way(file, "stable", graph_ptr2<ILayout>(StableLayout::Create()), argv[2]) &&
        bench::draw_way(file, "inc", graph_ptr2<ILayout>(IncLayout::Create()), argv[2]);
    return drawn ? 0 : 1;
}
